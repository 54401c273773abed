// SPDX-License-Identifier: MIT
#pragma once

#include <httplib.h>

#include <array>
#include <chrono>
#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <thread>

namespace VexmoraSDK {

/// The connection of one client. Reading and writing block until the server is destroyed.
class Connection : public httplib::Stream {
 public:
    /// The caller owns the socket.
    explicit Connection(socket_t socket);

    /// Waits for `time`, or for ever without one. Returns early when the client closes the
    /// connection or the server is destroyed.
    void wait(std::optional<std::chrono::milliseconds> time = std::nullopt) const;

    /// Writes all bytes; returns false when the connection is closed.
    bool sendAll(std::string_view bytes);
    /// Ends reading and writing. The socket is closed when the handler has returned.
    void close() { over_ = true; }
    /// Closes the connection so that the client receives a reset (RST).
    void reset();

    bool is_readable() const override { return true; }
    bool is_writable() const override { return true; }
    ssize_t read(char* data, size_t size) override;
    ssize_t write(const char* data, size_t size) override;
    using httplib::Stream::write;
    void get_remote_ip_and_port(std::string& ip, int& port) const override;
    void get_local_ip_and_port(std::string& ip, int& port) const override;
    socket_t socket() const override { return socket_; }

 private:
    const socket_t socket_;
    std::array<char, 4096> buffer_;
    size_t position_ = 0;
    size_t filled_ = 0;
    bool over_ = false;
};

/// httplib's server on 127.0.0.1, with a thread for each connection, so that a stalled request
/// delays no other. Its destructor waits for no client.
class HttpServer : public httplib::Server {
 public:
    HttpServer();
    ~HttpServer() override;

    /// Called with each request before its handler, on the connection's thread; it may change the
    /// request. Set it before `serve`.
    std::function<void(httplib::Request&)> onRequest;

    /// Binds the port, or any free one for 0. Returns the port, or 0 when it is not free.
    int bind(int port);

    /// Serves on threads of its own until the destructor has closed all connections and the last
    /// handler has returned. `bind` must have succeeded.
    void serve();

    /// The connection whose request the calling thread is handling.
    static Connection& connection() { return *connection_; }

 private:
    bool process_and_close_socket(socket_t socket) override;
    bool admit(socket_t socket);
    void release(socket_t socket);

    static thread_local Connection* connection_;
    std::thread listener_;
    std::mutex mutex_;
    std::set<socket_t> open_;
    bool stopping_ = false;
};

}  // namespace VexmoraSDK
