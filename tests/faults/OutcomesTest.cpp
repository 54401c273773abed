#include <gmock/gmock.h>

#include <array>
#include <map>
#include <sstream>

#include "VexmoraSDK/platform/common/UrlSessionLimits.h"
#include "adserver/AdServer.h"
#include "tests/faults/Hosts.h"
#include "tests/faults/Page.h"

namespace VexmoraSDK {
namespace {

using platform::UrlSessionLimits;

/// What the hosts of a banner, a native and an interstitial view hear.
using Outcome = std::array<std::string_view, 3>;

constexpr Outcome kDrawn = {"drawn", "drawn", "drawn"};
constexpr Outcome kStop = {"stop", "stop", "stop"};
constexpr Outcome kRequestError = {"RequestError", "RequestError", "RequestError"};
constexpr Outcome kNoAd = {"ParsingError, NoFill", "ParsingError, NoFill", "NoFill"};
constexpr Outcome kNothing = {"nothing", "nothing", "nothing"};
constexpr Outcome kNoPicture = {"stop", "ImageRequestError", "stop"};

enum class Answer {
    good,
    useless,  ///< An answer of HTTP without an ad or a picture in it.
    none,     ///< An error of the transport.
    late,     ///< The same, once a limit of time is reached.
};

struct Row {
    std::string_view fault;
    Answer answer;

    const Outcome& ofAds() const {
        return answer == Answer::good ? kDrawn : answer == Answer::useless ? kNoAd : kRequestError;
    }
    const Outcome& ofPicture() const {
        return answer == Answer::good ? kDrawn : answer == Answer::useless ? kNoPicture : kNothing;
    }
};

constexpr Row kRows[] = {
    {"status-404", Answer::useless},
    {"status-500", Answer::useless},
    {"status-204", Answer::useless},
    {"status-304", Answer::useless},
    {"status-206", Answer::useless},
    {"empty-body", Answer::useless},
    {"garbage", Answer::useless},
    {"slow", Answer::good},
    {"gzip", Answer::good},
    {"redirect", Answer::good},
    {"redirect-chain", Answer::good},
    {"until-closed", Answer::good},
    {"refused", Answer::none},
    {"unresolved", Answer::none},
    {"stall-connect", Answer::late},
    {"stall-handshake", Answer::late},
    {"bad-certificate", Answer::none},
    {"nothing", Answer::none},
    {"cut-status", Answer::none},
    {"cut-headers", Answer::none},
    {"cut-short", Answer::none},
    {"cut-chunked", Answer::none},
    {"cut-gzip", Answer::none},
    {"reset", Answer::none},
    {"reset-body", Answer::none},
    {"stall", Answer::late},
    {"stall-status", Answer::late},
    {"stall-headers", Answer::late},
    {"stall-body", Answer::late},
    {"dribble", Answer::late},
    {"early-hints", Answer::none},
    {"long-header", Answer::none},
    {"many-headers", Answer::none},
    {"endless-headers", Answer::none},
    {"endless", Answer::none},
    {"gzip-bomb", Answer::none},
    {"redirect-far", Answer::none},
    {"redirect-loop", Answer::none},
    {"not-http", Answer::none},
    {"version", Answer::none},
    {"length-short", Answer::useless},
    {"length-twice", Answer::good},
    {"lengths-differ", Answer::none},
    {"length-negative", Answer::none},
    {"length-words", Answer::none},
    {"length-overflow", Answer::none},
    {"chunk-words", Answer::none},
    {"chunk-negative", Answer::none},
    {"chunk-overflow", Answer::none},
    {"chunk-short", Answer::none},
    {"gzip-lie", Answer::none},
    {"encoding-unknown", Answer::none},
    {"redirect-file", Answer::none},
    {"redirect-words", Answer::none},
};

/// The faults that only the answer with the ads has.
constexpr std::pair<std::string_view, Outcome> kContents[] = {
    {"empty-array", kNoAd},   {"object", kStop},   {"three", kDrawn},
    {"missing-click", kStop}, {"bad-type", kStop}, {"native", {"stop", "drawn", "stop"}},
    {"nesting", kNoAd},
};

struct Case {
    Host host;
    std::string_view expected;
    bool isLate;
};

std::vector<Case> allCases() {
    std::vector<Case> cases;
    const auto add = [&](const std::string& container, const Outcome& outcome, bool isLate) {
        for (const Kind kind : {Kind::banner, Kind::native, Kind::interstitial})
            cases.push_back(
                {{container, kind}, outcome.at(static_cast<std::size_t>(kind)), isLate});
    };
    for (const auto& [fault, outcome] : kContents)
        add(std::string("fault-").append(fault), outcome, false);
    for (const Row& row : kRows) {
        const bool isLate = row.answer == Answer::late;
        add(std::string("fault-").append(row.fault), row.ofAds(), isLate);
        add(std::string("fault-picture-").append(row.fault), row.ofPicture(), isLate);
    }
    return cases;
}

/// What came of the cases, by container.
std::map<std::string, std::array<std::string, 3>> found;

void keep(const Case& tried, const std::string& outcome) {
    EXPECT_EQ(outcome, tried.expected) << tried.host.container;
    found[tried.host.container].at(static_cast<std::size_t>(tried.host.kind)) = outcome;
}

void writeTable() {
    std::ostringstream table;
    const auto addRow = [&](std::string_view fault, std::initializer_list<std::string> containers) {
        table << "| `" << fault << "` |";
        for (const auto& container : containers) {
            for (const auto& outcome : found[container])
                table << ' ' << outcome << " |";
        }
        table << '\n';
    };
    table << "| the way of the answer | ads: banner | native | interstitial "
             "| picture: banner | native | interstitial |\n|---|---|---|---|---|---|---|\n";
    for (const Row& row : kRows) {
        addRow(row.fault, {std::string("fault-").append(row.fault),
                           std::string("fault-picture-").append(row.fault)});
    }
    table << "\n| the ads of the answer | banner | native | interstitial |\n|---|---|---|---|\n";
    for (const auto& [fault, outcome] : kContents)
        addRow(fault, {std::string("fault-").append(fault)});
    Page::setTable("outcomes", table.str());
}

class OutcomesTest : public testing::Test {
 protected:
    OutcomesTest() {
        limits = {};
        limits.body = std::size_t{1} << 20;
        limits.transfers = 128;
    }

    void tryAll(const std::vector<Case>& cases) {
        std::vector<Host> hosts;
        for (const Case& tried : cases)
            hosts.push_back(tried.host);
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

    static void TearDownTestSuite() { writeTable(); }

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
