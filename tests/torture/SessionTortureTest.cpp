#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <semaphore>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/UrlSession.h"
#include "VexmoraSDK/platform/common/UrlSessionLimits.h"
#include "tests/fake_platform/FakeMainQueue.h"
#include "tests/session/RudeServer.h"
#include "tests/torture/Torture.h"

namespace VexmoraSDK {
namespace {

using platform::Data;
using platform::Error;
using platform::MainQueue;
namespace FakeMainQueue = platform::FakeMainQueue;
using platform::textOf;
using platform::Url;
using platform::UrlResponse;
using platform::UrlSession;
using platform::UrlSessionLimits;

/// In a process of its own: a process that has threads cannot be forked well.
class ServerProcess {
 public:
    explicit ServerProcess(const std::string& answer) {
        int place[2];
        if (pipe(place) != 0) throw std::runtime_error("no pipe");
        process_ = fork();
        if (process_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            const RudeServer server(answer);
            static_cast<void>(!write(place[1], server.port().data(), server.port().size()));
            while (true)
                pause();
        }
        char port[8] = {};
        static_cast<void>(!read(place[0], port, sizeof port - 1));
        address_ = std::string("http://localhost:") + port + "/";
        close(place[0]);
        close(place[1]);
    }
    ~ServerProcess() { kill(process_, SIGKILL); }

    const std::string& address() const { return address_; }

 private:
    pid_t process_;
    std::string address_;
};

/// What became of one task.
struct Ending {
    std::atomic<int> completions = 0;
    std::atomic<const char*> outcome = "no completion";
};

/// An answer, an error or, neither whole, a fault.
const char* outcomeOf(const std::optional<Data>& body, const std::optional<UrlResponse>& response,
                      const std::optional<Error>& error) {
    if (body && response && !error && textOf(*body) == "abcdef") return "answered";
    if (!body && !response && error && error->userInfo()->size() == 2) return "failed";
    return "half an outcome";
}

/// Two tasks, one after the other, so that the second finds what a failure has left behind.
std::string fetchTwice(const std::string& address, const std::function<void()>& begin) {
    FailingCalls::countMemoryOfLibcurl();
    FakeMainQueue::start();
    UrlSessionLimits::shared().connecting = std::chrono::seconds(5);
    UrlSessionLimits::shared().silence = std::chrono::seconds(3);
    std::array<Ending, 2> endings;
    std::counting_semaphore<> done(0);
    std::array<UrlSession::Completion, 2> completions;
    for (std::size_t i = 0; i < endings.size(); ++i) {
        completions[i] = [&ending = endings[i], &done](auto body, auto response, auto error) {
            ending.outcome = outcomeOf(body, response, error);
            if (++ending.completions == 1) done.release();
        };
    }
    std::array addresses = {*Url::fromString(address), *Url::fromString(address)};
    begin();

    for (std::size_t i = 0; i < endings.size(); ++i) {
        {
            const FailingCalls::Spared host;
            MainQueue::main()->async([&, i] {
                UrlSession::shared()
                    .dataTask(std::move(addresses[i]), std::move(completions[i]))
                    .resume();
            });
        }
        FakeMainQueue::drain();
        if (!done.try_acquire_for(std::chrono::seconds(30))) return "no completion";
    }
    const FailingCalls::Spared host;
    const auto& [first, second] = endings;
    if (first.completions != 1 || second.completions != 1) return "a second completion";
    return std::string(first.outcome) + ", " + second.outcome.load();
}

TEST(SessionTortureTest, CompletesEachTaskOnceOrStopsWhenACallFails) {
    // "abcdef"
    constexpr char kZipped[] =
        "\x1f\x8b\x08\0\0\0\0\0\x02\x03\x4b\x4c\x4a\x4e\x49\x4d\x03\0\xef\x39\x8e\x4b\x06\0\0";
    const ServerProcess server(
        "HTTP/1.1 200 OK\r\nSet-Cookie: visitor=17\r\nTransfer-Encoding: chunked\r\n"
        "Content-Encoding: gzip\r\n\r\n1a\r\n" +
        std::string(kZipped, sizeof kZipped) + "\r\n0\r\n\r\n");
    Torture::run("URL session",
                 [&](const auto& begin) { return fetchTwice(server.address(), begin); },
                 {{"answered, answered", ".*"},
                  {"failed, answered|answered, failed", ".*"},
                  {"failed, failed", "curl_global_init"},
                  {"fatal error: out of memory", "operator new"},
                  {"fatal error: no thread to be had", "pthread_create"}});
}

}  // namespace
}  // namespace VexmoraSDK
