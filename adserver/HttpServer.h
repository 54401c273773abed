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

/// One client's connection. Reading and writing block; the server's end interrupts them.
class Connection : public httplib::Stream {
 public:
    /// Does not own the socket.
    explicit Connection(socket_t socket);

    /// Lets `time` pass, or, without one, all there is. Returns early when the client leaves or the
    /// server ends.
    void wait(std::optional<std::chrono::milliseconds> time = std::nullopt) const;

    /// Writes all of it; false when the client has left or the server ends.
    bool say(std::string_view bytes);
    /// Nothing is read or written from now on, and the connection closes behind the handler.
    void hangUp() { over_ = true; }
    /// The same, but the client is told that something went wrong.
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

/// httplib's server on 127.0.0.1, with a thread for each connection, so that stalled requests hold
/// up nobody, and with an end that waits for no client.
class HttpServer : public httplib::Server {
 public:
    HttpServer();
    ~HttpServer() override;

    /// Sees each request before its handler, on the connection's thread, and may change it.
    /// To be set before `serve`.
    std::function<void(httplib::Request&)> onRequest;

    /// Takes the port, or any free one for 0. Returns it, or 0 when it is not to be had.
    int bind(int port);

    /// Serves from now on, on threads of its own, until the destructor has cut all connections and
    /// the last handler has returned. Needs a port.
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
