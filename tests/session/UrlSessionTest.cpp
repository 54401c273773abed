#include "VexmoraSDK/platform/UrlSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/common/UrlSessionLimits.h"
#include "adserver/AdServer.h"
#include "tests/fake_platform/FakeMainQueue.h"

namespace VexmoraSDK::platform {
namespace {

using testing::HasSubstr;

constexpr auto kDeadline = std::chrono::seconds(30);

struct Outcome {
    std::optional<Data> body;
    std::optional<UrlResponse> response;
    std::optional<Error> error;
    std::thread::id thread;

    std::string text() const { return body ? std::string(textOf(*body)) : "no body"; }
};

Outcome outcomeOf(std::future<Outcome> future) {
    if (future.wait_for(kDeadline) != std::future_status::ready) {
        ADD_FAILURE() << "no completion";
        std::quick_exit(1);
    }
    return future.get();
}

/// A task for `address` and the future of what its completion hears; a second completion of the
/// same task throws on a delivery thread, which ends the process.
std::pair<UrlSessionTask, std::future<Outcome>> taskFor(const std::string& address) {
    auto promise = std::make_shared<std::promise<Outcome>>();
    auto future = promise->get_future();
    auto task = UrlSession::shared().dataTask(
        Url::fromString(address).value(), [promise](auto body, auto response, auto error) {
            promise->set_value(
                {std::move(body), response, std::move(error), std::this_thread::get_id()});
        });
    return {std::move(task), std::move(future)};
}

Outcome fetch(const std::string& address) {
    auto [task, future] = taskFor(address);
    task.resume();
    return outcomeOf(std::move(future));
}

class UrlSessionTest : public testing::Test {
 protected:
    UrlSessionTest() {
        auto& limits = UrlSessionLimits::shared();
        limits.silence = std::chrono::seconds(1);
        limits.total = std::chrono::seconds(20);
        limits.body = 1 << 20;
    }

    std::string ads(const std::string& container) const {
        return server.address() + "/ads?container=" + container + "&types=77";
    }

    /// The picture of the ad that this container gets.
    std::string pictureOf(const std::string& container) const {
        const std::string answer = fetch(ads(container)).text();
        const std::string member = "\"bannerUrl\":\"";
        const auto begin = answer.find(member) + member.size();
        return answer.substr(begin, answer.find('"', begin) - begin);
    }

    void expectTransportError(const std::string& address) const {
        SCOPED_TRACE(address);
        const Outcome outcome = fetch(address);
        EXPECT_FALSE(outcome.body);
        EXPECT_FALSE(outcome.response);
        ASSERT_TRUE(outcome.error);
        const auto& userInfo = outcome.error->userInfo().value();
        EXPECT_NE(*userInfo.find(kLocalizedDescriptionKey)->second.as<std::string>(), "");
        EXPECT_EQ(*userInfo.find(kFailingUrlStringKey)->second.as<std::string>(), address);
    }

    static Catalog catalog() {
        std::string error;
        return Catalog::load(VEXMORA_CATALOG, error).value();
    }

    AdServer server{catalog()};
};

TEST_F(UrlSessionTest, GivesTheBodyOfAnyHttpAnswerOnAnotherThread) {
    const Outcome ad = fetch(ads("home-bottom"));
    EXPECT_FALSE(ad.error);
    EXPECT_EQ(ad.response.value().statusCode, 200);
    EXPECT_THAT(ad.text(), HasSubstr("adTypeId"));
    EXPECT_NE(ad.thread, std::this_thread::get_id());

    const Outcome page = fetch(ads("fault-status-404"));
    EXPECT_EQ(page.response.value().statusCode, 404);
    EXPECT_THAT(page.text(), HasSubstr("Error 404"));

    EXPECT_THAT(fetch(ads("fault-redirect")).text(), HasSubstr("adTypeId"));
    EXPECT_THAT(fetch(ads("fault-gzip")).text(), HasSubstr("adTypeId"));
}

TEST_F(UrlSessionTest, GivesAnEmptyBodyWhereTheAnswerHasNone) {
    for (const auto* container : {"fault-status-204", "fault-empty-body"}) {
        const Outcome outcome = fetch(ads(container));
        EXPECT_FALSE(outcome.error) << container;
        EXPECT_EQ(outcome.text(), "") << container;
    }
}

TEST_F(UrlSessionTest, TellsWhenTheTransferFails) {
    for (const auto* container :
         {"fault-cut-short", "fault-cut-chunked", "fault-redirect-loop", "fault-redirect-file"}) {
        expectTransportError(ads(container));
    }
    expectTransportError(pictureOf("fault-picture-cut-short"));
    expectTransportError(pictureOf("fault-picture-refused"));
    expectTransportError(pictureOf("fault-picture-unresolved"));
}

TEST_F(UrlSessionTest, FetchesOnlyAbsoluteAddressesOfHttp) {
    for (const auto* address : {"127.0.0.1", "creatives/a.png", "//127.0.0.1/a.png", "http:/a.png",
                                "http:a.png", "file:///etc/hostname", "ftp://127.0.0.1/a.png"}) {
        expectTransportError(address);
    }
}

TEST_F(UrlSessionTest, GivesUpOnAServerThatStallsOrNeverEnds) {
    for (const auto* container : {"fault-stall", "fault-stall-body", "fault-endless"}) {
        expectTransportError(ads(container));
    }
}

TEST_F(UrlSessionTest, SendsTheAddressAsItIsWritten) {
    const std::string target = "/creatives/%41/../%c3/./x?q=a,b&s=%41%C3'(;)";
    fetch(server.address() + target + "#not-sent");
    EXPECT_EQ(server.requests().back().target, target);
}

TEST_F(UrlSessionTest, UsesAConnectionAgain) {
    fetch(ads("home-bottom"));
    fetch(ads("home-bottom"));
    const auto requests = server.requests();
    EXPECT_EQ(requests.at(0).clientPort, requests.at(1).clientPort);
}

TEST_F(UrlSessionTest, StartsATaskOnceAndOnlyWhenItIsResumed) {
    auto [unused, never] = taskFor(ads("unused"));
    auto [task, future] = taskFor(ads("home-bottom"));
    task.resume();
    task.resume();
    outcomeOf(std::move(future));
    fetch(ads("home-bottom"));
    EXPECT_EQ(server.requests().size(), 2u);
}

TEST_F(UrlSessionTest, StartsATaskOfAMainQueueBlockBehindThatBlock) {
    FakeMainQueue::start();
    auto [task, future] = taskFor(ads("home-bottom"));
    bool answeredInside = true;
    MainQueue::main()->async([&, resumed = &task] {
        resumed->resume();
        // Were the task started already, its request would be there before this other one's.
        std::thread([&] { fetch(ads("fault-empty-array")); }).join();
        answeredInside = server.requests().size() != 1;
    });
    FakeMainQueue::drain();
    outcomeOf(std::move(future));
    EXPECT_FALSE(answeredInside);
    EXPECT_EQ(server.requests().size(), 2u);
    FakeMainQueue::stop();
}

TEST_F(UrlSessionTest, CompletesEveryTaskOfManyThreadsOnce) {
    constexpr int kThreads = 8;
    constexpr int kEach = 50;
    std::atomic<int> completions = 0;
    std::promise<void> all;
    const auto count = [&](auto, auto, auto) {
        if (++completions == kThreads * kEach) all.set_value();
    };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = 0; i < kEach; ++i) {
                const auto url = i % 5 == thread % 5 ? "relative" : ads("home-bottom");
                UrlSession::shared().dataTask(Url::fromString(url).value(), count).resume();
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(all.get_future().wait_for(kDeadline), std::future_status::ready);
    EXPECT_EQ(server.requests().size(), kThreads * kEach * 4u / 5u);
}

using UrlSessionExitTest = UrlSessionTest;

TEST_F(UrlSessionExitTest, LeavesCleanlyWithTransfersInFlight) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto startMany = [this] {
        for (const auto* container : {"fault-stall", "fault-stall-body", "fault-endless"}) {
            auto [task, future] = taskFor(ads(container));
            task.resume();
        }
        auto [task, future] = taskFor("http://pictures.invalid/");
        task.resume();
        server.waitForRequests(3);
    };
    EXPECT_EXIT(
        {
            startMany();
            std::exit(7);
        },
        testing::ExitedWithCode(7), "^$");
    EXPECT_EXIT(
        {
            startMany();
            UrlSession::shared()
                .dataTask(Url::fromString(ads("home-bottom")).value(),
                          [](auto, auto, auto) { std::exit(8); })
                .resume();
            std::promise<void>().get_future().wait_for(kDeadline);
        },
        testing::ExitedWithCode(8), "^$");
}

}  // namespace
}  // namespace VexmoraSDK::platform
