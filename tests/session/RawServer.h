#pragma once

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace VexmoraSDK {

/// A server too rude for a library of HTTP: sends the same bytes to every client, once that has
/// said something, and hangs up. Without bytes to send it keeps its clients waiting.
class RawServer {
 public:
    explicit RawServer(std::string answer = {}) : answer_(std::move(answer)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* any = reinterpret_cast<sockaddr*>(&address);
        socklen_t size = sizeof address;
        if (bind(socket_, any, size) != 0 || listen(socket_, SOMAXCONN) != 0 ||
            getsockname(socket_, any, &size) != 0) {
            throw std::runtime_error("no port to be had");
        }
        place_ = "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
        thread_ = std::thread([this] { serve(); });
    }

    ~RawServer() {
        shutdown(socket_, SHUT_RDWR);
        thread_.join();
        close(socket_);
        for (const int client : kept_)
            close(client);
    }

    /// "127.0.0.1:PORT"
    const std::string& place() const { return place_; }

    /// What clients said first, from when there are `count`; fewer when that takes too long.
    std::vector<std::string> requests(std::size_t count) {
        std::unique_lock lock(mutex_);
        arrived_.wait_for(lock, std::chrono::seconds(30),
                          [&] { return requests_.size() >= count; });
        return requests_;
    }

 private:
    void serve() {
        for (int client; (client = accept(socket_, nullptr, nullptr)) >= 0;) {
            char bytes[4096];
            const ssize_t count = recv(client, bytes, sizeof bytes, 0);
            {
                const std::lock_guard lock(mutex_);
                requests_.emplace_back(bytes, count > 0 ? static_cast<std::size_t>(count) : 0);
            }
            arrived_.notify_all();
            if (answer_.empty()) {
                kept_.push_back(client);
            } else {
                // A client that has enough may have left.
                send(client, answer_.data(), answer_.size(), MSG_NOSIGNAL);
                close(client);
            }
        }
    }

    const std::string answer_;
    const int socket_ = socket(AF_INET, SOCK_STREAM, 0);
    std::string place_;
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::vector<std::string> requests_;
    std::vector<int> kept_;
    std::thread thread_;
};

}  // namespace VexmoraSDK
