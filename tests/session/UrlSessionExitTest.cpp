#include <cstdlib>

#include "tests/session/StalledResolver.h"
#include "tests/session/UrlSessionTest.h"

namespace VexmoraSDK::platform {
namespace {

/// What each of these tests does happens in a process of its own, which must end well and quietly.
class UrlSessionExitTest : public UrlSessionTest {
 protected:
    UrlSessionExitTest() { testing::GTEST_FLAG(death_test_style) = "threadsafe"; }

    /// Returns when a transfer is in flight at each stage.
    void startAtEveryStage() {
        for (const auto& address :
             {ads("fault-stall"), ads("fault-stall-body"), ads("fault-endless"),
              ads("fault-stall-handshake"), std::string("http://") + StalledResolver::kName}) {
            taskFor(address).first.resume();
        }
        const bool inFlight = server.waitForRequests(4) && StalledResolver::waitForQuery();
        if (!inFlight) std::quick_exit(1);
    }

    StalledResolver resolver;
};

TEST_F(UrlSessionExitTest, LeavesMainWithTransfersInFlight) {
    EXPECT_EXIT(
        {
            startAtEveryStage();
            std::exit(7);
        },
        testing::ExitedWithCode(7), "^$");
}

TEST_F(UrlSessionExitTest, LeavesAnotherThreadWithTransfersInFlight) {
    EXPECT_EXIT(
        {
            startAtEveryStage();
            std::thread([] { std::exit(7); }).join();
        },
        testing::ExitedWithCode(7), "^$");
}

TEST_F(UrlSessionExitTest, LeavesACompletionWithTransfersInFlight) {
    EXPECT_EXIT(
        {
            startAtEveryStage();
            UrlSession::shared()
                .dataTask(Url::fromString(ads("home-bottom")).value(),
                          [](auto, auto, auto) { std::exit(7); })
                .resume();
            std::promise<void>().get_future().wait_for(kDeadline);
        },
        testing::ExitedWithCode(7), "^$");
}

}  // namespace
}  // namespace VexmoraSDK::platform
