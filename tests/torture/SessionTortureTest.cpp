// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <array>
#include <semaphore>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/http/UrlSession.h"
#include "VexmoraSDK/platform/http/UrlSessionLimits.h"
#include "tests/PlainPicture.h"
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

/// What became of one task.
struct Ending {
    std::atomic<int> completions = 0;
    std::atomic<const char*> outcome = "no completion";
};

/// What a completion was given: a whole response, a whole error or, if neither, a fault. A response
/// without ads is whole, too: libcurl without memory may request the URL without its query.
const char* outcomeOf(const platform::SharedData& body, const std::optional<UrlResponse>& response,
                      const std::optional<Error>& error) {
    const std::string_view text = body ? textOf(*body) : "";
    const bool whole =
        (text.starts_with("[") && text.ends_with("]")) || text == plainPicture(320, 60);
    if (whole && response && !error) return "answered";
    if (!body && !response && error && error->userInfo()->size() == 2) return "failed";
    return "half an outcome";
}

/// Fetches one address after the other, so that each fetch meets what an earlier failure left
/// behind.
std::string fetchAll(std::array<Url, 3> addresses, const std::function<void()>& begin) {
    FailingCalls::countMemoryOfLibcurl();
    FakeMainQueue::start();
    UrlSession::shared().limits().connectTimeout = std::chrono::seconds(5);
    UrlSession::shared().limits().idleTimeout = std::chrono::seconds(3);
    std::array<Ending, 3> endings;
    std::counting_semaphore<> done(0);
    std::array<UrlSession::Completion, 3> completions;
    for (std::size_t i = 0; i < endings.size(); ++i) {
        completions[i] = [&ending = endings[i], &done](auto body, auto response, auto error) {
            ending.outcome = outcomeOf(body, response, error);
            if (++ending.completions == 1) done.release();
        };
    }
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
    std::string outcomes;
    for (const Ending& ending : endings) {
        if (ending.completions != 1) return "a second completion";
        outcomes.append(outcomes.empty() ? "" : ", ").append(ending.outcome);
    }
    return outcomes;
}

TEST(SessionTortureTest, CompletesEachTaskOnceOrStopsWhenACallFails) {
    // The server runs in a process of its own, because a process with threads cannot fork safely.
    Program server({VEXMORA_ADSERVER, "--catalog", VEXMORA_CATALOG});
    const std::string place = server.readLabelled("Listening on http://127.0.0.1:");
    server.stopReading();
    const auto url = [&](const char* path) {
        return Url::fromString("http://localhost:" + place + path).value();
    };
    // The third request revalidates the stored second response and gets a 304.
    constexpr auto kPicture = "/creatives/banner.webp?container=fault-picture-no-cache";
    const std::array addresses = {url("/ads?container=fault-gzip&types=77"), url(kPicture),
                                  url(kPicture)};
    Torture::run("URL session", [&](const auto& begin) { return fetchAll(addresses, begin); },
                 {{"answered, answered, answered", ".*"},
                  {"failed, answered, answered", ".*"},
                  {"answered, failed, answered", ".*"},
                  {"answered, answered, failed", ".*"},
                  {"failed, failed, failed", "curl_global_init"},
                  {"terminate called .*bad_alloc'", "operator new"},
                  {"fatal error: no thread to be had", "pthread_create"}});
}

}  // namespace
}  // namespace VexmoraSDK
