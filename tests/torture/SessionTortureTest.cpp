#include <gtest/gtest.h>

#include <array>
#include <semaphore>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/UrlSession.h"
#include "VexmoraSDK/platform/common/UrlSessionLimits.h"
#include "tests/Program.h"
#include "tests/fake_platform/FakeMainQueue.h"
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

/// What became of one task.
struct Ending {
    std::atomic<int> completions = 0;
    std::atomic<const char*> outcome = "no completion";
};

/// An answer, an error or, neither whole, a fault. An answer without ads is one too: libcurl may
/// ask without what stands behind the "?" when it has no memory for that.
const char* outcomeOf(const std::optional<Data>& body, const std::optional<UrlResponse>& response,
                      const std::optional<Error>& error) {
    const bool whole = body && textOf(*body).starts_with("[") && textOf(*body).ends_with("]");
    if (whole && response && !error) return "answered";
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
    // In a process of its own: one that has threads cannot be forked well.
    Program server({VEXMORA_ADSERVER, "--catalog", VEXMORA_CATALOG});
    const std::string place = server.readLabelled("Listening on http://127.0.0.1:");
    server.stopReading();
    const auto address = "http://localhost:" + place + "/ads?container=fault-gzip&types=77";
    Torture::run("URL session", [&](const auto& begin) { return fetchTwice(address, begin); },
                 {{"answered, answered", ".*"},
                  {"failed, answered|answered, failed", ".*"},
                  {"failed, failed", "curl_global_init"},
                  {"fatal error: out of memory", "operator new"},
                  {"fatal error: no thread to be had", "pthread_create"}});
}

}  // namespace
}  // namespace VexmoraSDK
