// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "VexmoraSDK/platform/http/UrlSession.h"
#include "VexmoraSDK/platform/http/UrlSessionLimits.h"
#include "adserver/AdServer.h"
#include "tests/faults/Hosts.h"

namespace VexmoraSDK {
namespace {

class OutcomesTest : public testing::Test {
 protected:
    OutcomesTest() {
        limits_ = {};
        limits_.maxBodyBytes = std::size_t{1} << 20;
        limits_.maxConcurrentTransfers = 128;
    }

    static bool isStop(const Promise& promise) { return promise.events == "stop"; }

    /// Whether only a timeout ends the request.
    static bool isEndless(const Promise& promise) {
        return promise.container.find("stall") != std::string::npos ||
               promise.container.find("dribble") != std::string::npos;
    }

    template <class Condition>
    static std::vector<Promise> promisesThat(Condition condition) {
        auto chosen = promises();
        std::erase_if(chosen, [&](const Promise& promise) { return !condition(promise); });
        EXPECT_FALSE(chosen.empty());
        return chosen;
    }

    static void expectAllKept(const std::vector<Promise>& chosen) {
        const auto events = show(chosen);
        for (std::size_t i = 0; i < chosen.size(); ++i)
            EXPECT_EQ(events[i], chosen[i].events) << chosen[i].container;
    }

    platform::UrlSessionLimits& limits_ = platform::UrlSession::shared().limits();
};

TEST_F(OutcomesTest, AreWrittenDownForEveryFault) {
    std::set<std::string> covered;
    for (const Promise& promise : promises())
        covered.insert(promise.container);
    for (const auto& row : rowsOf("limits"))
        covered.insert(row[0]);
    for (const auto& container : AdServer::faultyContainers())
        EXPECT_TRUE(covered.contains(container)) << container;
}

TEST_F(OutcomesTest, AreAsPromisedWhereTheResponseEnds) {
    expectAllKept(
        promisesThat([](const Promise& each) { return !isStop(each) && !isEndless(each); }));
}

TEST_F(OutcomesTest, AreAsPromisedWhereATimeoutEndsTheRequest) {
    limits_.connectTimeout = std::chrono::seconds(2);
    limits_.idleTimeout = std::chrono::seconds(2);
    limits_.totalTimeout = std::chrono::seconds(8);
    expectAllKept(
        promisesThat([](const Promise& each) { return !isStop(each) && isEndless(each); }));
}

TEST_F(OutcomesTest, AreDeliberateStopsWhereTheServerBreaksItsPromises) {
    for (const Promise& promise : promisesThat(isStop)) {
        EXPECT_EXIT(showAlone(promise, 0), testing::KilledBySignal(SIGABRT),
                    "fatal error: [^\n]+\n  where: [^\n]*\"http://[^\n]+")
            << promise.container;
    }
}

}  // namespace
}  // namespace VexmoraSDK
