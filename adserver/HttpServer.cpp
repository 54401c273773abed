// SPDX-License-Identifier: MIT
#include "adserver/HttpServer.h"

#include <poll.h>

#include <algorithm>
#include <condition_variable>
#include <utility>

namespace VexmoraSDK {
namespace {

constexpr std::chrono::hours kMaxIdleTime{1};

class ThreadPerConnection : public httplib::TaskQueue {
 public:
    void enqueue(std::function<void()> serve) override {
        const std::lock_guard lock(mutex_);
        std::thread([this, serve = std::move(serve)] {
            serve();
            const std::lock_guard ending(mutex_);
            --running_;
            ended_.notify_all();
        }).detach();
        ++running_;
    }

    void shutdown() override {
        std::unique_lock lock(mutex_);
        ended_.wait(lock, [this] { return running_ == 0; });
    }

 private:
    std::mutex mutex_;
    std::condition_variable ended_;
    int running_ = 0;
};

void readAddress(decltype(getpeername) query, socket_t socket, std::string& ip, int& port) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    query(socket, reinterpret_cast<sockaddr*>(&address), &size);
    ip = "127.0.0.1";
    port = ntohs(address.sin_port);
}

}  // namespace

Connection::Connection(socket_t socket) : socket_(socket) {}

void Connection::wait(std::optional<std::chrono::milliseconds> time) const {
    pollfd end{socket_, POLLRDHUP, 0};
    poll(&end, 1, time ? static_cast<int>(time->count()) : -1);
}

bool Connection::sendAll(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = write(bytes.data(), bytes.size());
        if (sent <= 0) return false;
        bytes.remove_prefix(static_cast<size_t>(sent));
    }
    return true;
}

void Connection::reset() {
    const linger atOnce{1, 0};
    setsockopt(socket_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    close();
}

ssize_t Connection::read(char* data, size_t size) {
    if (over_) return 0;
    if (position_ == filled_) {
        const ssize_t received = recv(socket_, buffer_.data(), buffer_.size(), 0);
        if (received <= 0) return received;
        position_ = 0;
        filled_ = static_cast<size_t>(received);
    }
    const size_t taken = std::min(size, filled_ - position_);
    std::copy_n(buffer_.data() + position_, taken, data);
    position_ += taken;
    return static_cast<ssize_t>(taken);
}

ssize_t Connection::write(const char* data, size_t size) {
    return over_ ? -1 : send(socket_, data, size, MSG_NOSIGNAL);
}

void Connection::get_remote_ip_and_port(std::string& ip, int& port) const {
    readAddress(getpeername, socket_, ip, port);
}

void Connection::get_local_ip_and_port(std::string& ip, int& port) const {
    readAddress(getsockname, socket_, ip, port);
}

thread_local Connection* HttpServer::connection_ = nullptr;

HttpServer::HttpServer() {
    new_task_queue = [] { return new ThreadPerConnection; };
    // Headers and body are two writes; the second must not wait until the first is acknowledged.
    set_tcp_nodelay(true);
    set_read_timeout(kMaxIdleTime);
    set_write_timeout(kMaxIdleTime);
    // These are told to clients, which keep their connections open for as long.
    set_keep_alive_timeout(std::chrono::seconds(kMaxIdleTime).count());
    set_keep_alive_max_count(1'000'000);
    // httplib's default options would let two servers share one port.
    set_socket_options([](socket_t socket) {
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
}

HttpServer::~HttpServer() {
    if (!listener_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        for (const socket_t socket : open_)
            ::shutdown(socket, SHUT_RDWR);
    }
    ::shutdown(svr_sock_, SHUT_RDWR);
    listener_.join();
}

int HttpServer::bind(int port) {
    if (port == 0) return std::max(bind_to_any_port("127.0.0.1"), 0);
    return bind_to_port("127.0.0.1", port) ? port : 0;
}

void HttpServer::serve() {
    ::listen(svr_sock_, SOMAXCONN);  // httplib's backlog of 5 makes bursts of clients retry
    listener_ = std::thread([this] { listen_after_bind(); });
}

bool HttpServer::process_and_close_socket(socket_t socket) {
    if (admit(socket)) {
        Connection connection(socket);
        connection_ = &connection;
        bool closed = false;
        while (process_request(connection, false, closed, onRequest) && !closed) {
        }
        connection_ = nullptr;
        release(socket);
    }
    ::close(socket);
    return true;
}

bool HttpServer::admit(socket_t socket) {
    const std::lock_guard lock(mutex_);
    if (!stopping_) open_.insert(socket);
    return !stopping_;
}

void HttpServer::release(socket_t socket) {
    const std::lock_guard lock(mutex_);
    open_.erase(socket);
}

}  // namespace VexmoraSDK
