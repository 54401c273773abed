#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <map>

#include "VexmoraSDK/platform/common/UrlSessionLimits.h"
#include "adserver/AdServer.h"
#include "tests/faults/Hosts.h"
#include "tests/faults/Outcomes.h"
#include "tests/faults/Page.h"

namespace VexmoraSDK {
namespace {

using platform::UrlSessionLimits;

std::string containerOf(const Promise& promise) {
    return std::string("fault-").append(promise.fault);
}

std::string pictureContainerOf(const Promise& promise) {
    return std::string("fault-picture-").append(promise.fault);
}

struct Case {
    Host host;
    std::string_view expected;
    bool isLate;
};

std::vector<Case> allCases() {
    std::vector<Case> cases;
    for (const Promise& promise : promises()) {
        for (const Kind kind : {Kind::banner, Kind::native, Kind::interstitial}) {
            const auto index = static_cast<std::size_t>(kind);
            cases.push_back({{containerOf(promise), kind}, promise.ads[index], promise.isLate});
            if (!promise.picture) continue;
            cases.push_back(
                {{pictureContainerOf(promise), kind}, (*promise.picture)[index], promise.isLate});
        }
    }
    return cases;
}

/// What came of the cases, by container.
std::map<std::string, std::array<std::string, 3>> found;

void keep(const Case& tried, const std::string& outcome) {
    EXPECT_EQ(outcome, tried.expected) << tried.host.container;
    found[tried.host.container].at(static_cast<std::size_t>(tried.host.kind)) = outcome;
}

std::string cellsOf(const std::string& container) {
    std::string cells;
    for (const auto& outcome : found[container])
        cells += ' ' + outcome + " |";
    return cells;
}

std::string table() {
    std::string ways =
        "| the way of the answer | ads: banner | native | interstitial "
        "| picture: banner | native | interstitial |\n|---|---|---|---|---|---|---|\n";
    std::string contents =
        "\n| the ads of the answer | banner | native | interstitial |\n|---|---|---|---|\n";
    for (const Promise& promise : promises()) {
        auto row = "| `" + std::string(promise.fault) + "` |" + cellsOf(containerOf(promise));
        if (promise.picture) row += cellsOf(pictureContainerOf(promise));
        (promise.picture ? ways : contents) += row + '\n';
    }
    return ways + contents;
}

class OutcomesTest : public testing::Test {
 protected:
    OutcomesTest() {
        limits = {};
        limits.body = std::size_t{1} << 20;
        limits.transfers = 128;
    }

    void tryAll(const std::vector<Case>& cases) {
        std::vector<Host> hosts(cases.size());
        std::ranges::transform(cases, hosts.begin(), &Case::host);
        const auto heard = show(hosts);
        for (std::size_t i = 0; i < cases.size(); ++i)
            keep(cases[i], heard[i]);
    }

    static std::vector<Case> casesThatEnd(bool late) {
        auto cases = allCases();
        std::erase_if(cases, [&](const Case& each) {
            return each.expected == "stop" || each.isLate != late;
        });
        return cases;
    }

    static void TearDownTestSuite() { Page::setTable("outcomes", table()); }

    UrlSessionLimits& limits = UrlSessionLimits::shared();
};

TEST_F(OutcomesTest, CoverEveryFault) {
    std::vector<std::string> covered;
    for (const Case& each : allCases())
        covered.push_back(each.host.container);
    for (const auto* large : {"hundred-thousand", "long-title", "accents"})
        covered.push_back(std::string("fault-") + large);
    for (const auto& container : AdServer::faultyContainers())
        EXPECT_THAT(covered, testing::Contains(container));
}

TEST_F(OutcomesTest, AreAsPromisedWhereTheServerIsDoneSoon) {
    tryAll(casesThatEnd(false));
}

TEST_F(OutcomesTest, AreAsPromisedWhereTheServerNeverEnds) {
    limits.connecting = std::chrono::seconds(2);
    limits.silence = std::chrono::seconds(2);
    limits.total = std::chrono::seconds(8);
    tryAll(casesThatEnd(true));
}

TEST_F(OutcomesTest, AreDeliberateStopsWhereTheServerBreaksThePromise) {
    for (const Case& each : allCases()) {
        if (each.expected != "stop") continue;
        bool stopped = false;
        const auto isReport = [&](const std::string& told) {
            return stopped = told.find("fatal error: ") != told.npos;
        };
        EXPECT_EXIT(showAndTell(each.host), testing::KilledBySignal(SIGABRT),
                    testing::Truly(isReport));
        keep(each, stopped ? "stop" : "no stop");
    }
}

}  // namespace
}  // namespace VexmoraSDK
