#include <gmock/gmock.h>

#include <set>

#include "VexmoraSDK/platform/http/UrlSessionLimits.h"
#include "adserver/AdServer.h"
#include "tests/faults/Hosts.h"
#include "tests/faults/Outcomes.h"

namespace VexmoraSDK {
namespace {

class OutcomesTest : public testing::Test {
 protected:
    struct Case {
        Host host;
        std::string expected;

        /// Whether it comes about by a limit of time.
        bool isLate() const {
            const auto is = [this](const char* word) {
                return host.container.find(word) != host.container.npos;
            };
            return is("stall") || is("dribble");
        }
        bool isStop() const { return expected == "stop"; }
    };

    OutcomesTest() {
        limits_ = {};
        limits_.body = std::size_t{1} << 20;
        limits_.transfers = 128;
        for (const Promise& promise : promises()) {
            for (const auto kind : {VexmoraViewType::banner, VexmoraViewType::native,
                                    VexmoraViewType::interstitial}) {
                cases_.push_back({{promise.container, kind}, promise.in(kind)});
            }
        }
    }

    void tryAll(bool late) {
        std::erase_if(cases_,
                      [&](const Case& each) { return each.isStop() || each.isLate() != late; });
        std::vector<Host> hosts;
        for (const Case& each : cases_)
            hosts.push_back(each.host);
        const auto heard = show(hosts);
        for (std::size_t i = 0; i < cases_.size(); ++i)
            EXPECT_EQ(heard[i], cases_[i].expected) << cases_[i].host.container;
    }

    platform::UrlSessionLimits& limits_ = platform::UrlSessionLimits::shared();
    std::vector<Case> cases_;
};

TEST_F(OutcomesTest, AreWrittenDownForEveryFault) {
    std::set<std::string> covered;
    for (const Case& each : cases_)
        covered.insert(each.host.container);
    for (const auto& row : rowsOf("limits"))
        covered.insert(row[0]);
    for (const auto& container : AdServer::faultyContainers())
        EXPECT_TRUE(covered.contains(container)) << container;
}

TEST_F(OutcomesTest, AreAsPromisedWhereTheServerIsDoneSoon) {
    tryAll(false);
}

TEST_F(OutcomesTest, AreAsPromisedWhereTheServerNeverEnds) {
    limits_.connecting = std::chrono::seconds(2);
    limits_.silence = std::chrono::seconds(2);
    limits_.total = std::chrono::seconds(8);
    tryAll(true);
}

TEST_F(OutcomesTest, AreDeliberateStopsWhereTheServerBreaksThePromise) {
    std::erase_if(cases_, [](const Case& each) { return !each.isStop(); });
    EXPECT_FALSE(cases_.empty());
    for (const auto& [host, expected] : cases_) {
        EXPECT_EXIT(showAlone(host, expected, 0), testing::KilledBySignal(SIGABRT), "fatal error: ")
            << host.container;
    }
}

}  // namespace
}  // namespace VexmoraSDK
