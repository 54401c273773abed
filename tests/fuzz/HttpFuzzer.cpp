// SPDX-License-Identifier: MIT
// Feeds the URL session with responses.
#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <future>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "VexmoraSDK/platform/http/UrlSession.h"
#include "VexmoraSDK/platform/http/UrlSessionLimits.h"
#include "tests/fuzz/Fuzzing.h"

namespace VexmoraSDK {
namespace {

constexpr std::string_view kNextAnswer = "\n%%\n";

/// The only network of the process. Each connection, to whatever address, receives the next part of
/// the input; when all parts were sent, it receives the last one again.
class Network {
 public:
    static Network& shared() {
        static auto& network = *new Network;
        return network;
    }

    void begin(std::string_view answers) {
        const std::lock_guard lock(mutex_);
        answers_ = answers;
        for (const int peer : std::exchange(peers_, {}))
            close(peer);
    }

    int connect(int descriptor) {
        int ends[2];
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0)
            return -1;
        dup2(ends[0], descriptor);
        close(ends[0]);
        const std::lock_guard lock(mutex_);
        const auto end = answers_.find(kNextAnswer);
        const auto answer = answers_.substr(0, end);
        if (end != answers_.npos) answers_.remove_prefix(end + kNextAnswer.size());
        send(ends[1], answer.data(), answer.size(), MSG_NOSIGNAL);
        shutdown(ends[1], SHUT_WR);
        peers_.push_back(ends[1]);  // It stays open so that the client can send its request.
        return 0;
    }

 private:
    std::mutex mutex_;
    std::string_view answers_;
    std::vector<int> peers_;
};

void shrinkLimits() {
    auto& limits = platform::UrlSession::shared().limits();
    limits.connectTimeout = std::chrono::seconds(10);
    limits.totalTimeout = std::chrono::seconds(10);
    limits.maxRedirects = 3;
    limits.maxBodyBytes = 64 << 10;
}

/// A second completion would make the promise throw on a delivery thread, which ends the process.
void fetch(const std::string& address) {
    auto done = std::make_shared<std::promise<void>>();
    auto future = done->get_future();
    const auto url = platform::Url::fromString(address);
    auto task = platform::UrlSession::shared().dataTask(
        url.value(), [done](auto body, auto response, auto error) {
            check((body != nullptr) != error.has_value(), "neither a body nor an error, or both");
            check((body != nullptr) == response.has_value(), "a body without a response");
            check(!body || body->size() <= platform::UrlSession::shared().limits().maxBodyBytes,
                  "more than the largest body");
            done->set_value();
        });
    task.resume();
    check(future.wait_for(std::chrono::seconds(60)) == std::future_status::ready, "no completion");
}

}  // namespace
}  // namespace VexmoraSDK

// The linker prefers these to the functions of the C library, for libcurl too.

extern "C" int connect(int descriptor, const sockaddr*, socklen_t) {
    return VexmoraSDK::Network::shared().connect(descriptor);
}

extern "C" int getaddrinfo(const char*, const char* service, const addrinfo* hints,
                           addrinfo** result) {
    static const auto next =
        reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return next("127.0.0.1", service, hints, result);
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    VexmoraSDK::shrinkLimits();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace VexmoraSDK;
    Network::shared().begin({reinterpret_cast<const char*>(bytes), size});
    // The second fetch of the address may be served from the cache.
    static int turn = 0;
    const auto address = "http://10.0.0.1/ads?container=1&types=77&turn=" + std::to_string(++turn);
    fetch(address);
    fetch(address);
    return 0;
}
