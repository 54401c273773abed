// SPDX-License-Identifier: MIT
#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/views/VexmoraViewFactory.h"
#include "tests/AppTest.h"
#include "tests/LocalAds.h"

using VexmoraSDK::App;
using VexmoraSDK::LocalAds;
using VexmoraSDK::VexmoraViewFactory;
using VexmoraSDK::platform::MainQueue;

namespace {

using QtMainQueueTest = VexmoraSDK::AppTest;

TEST_F(QtMainQueueTest, LetsTheEventLoopRunBetweenManyBlocks) {
    bool over = false;
    std::function<void()> again = [&] {
        if (!over) MainQueue::main()->async(again);
    };
    MainQueue::main()->async(again);
    QTimer::singleShot(0, [&] { over = true; });
    EXPECT_TRUE(App::waitFor([&] { return over; }));
    App::runQueuedBlocks();
}

TEST(QtMainQueueDeathTest, IsAbsentInAnAppWithoutAUserInterface) {
    int argc = 0;
    EXPECT_EXIT(
        {
            const QCoreApplication app(argc, nullptr);
            LocalAds::server();
            std::exit(MainQueue::main() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_DEATH(
        {
            const QCoreApplication app(argc, nullptr);
            LocalAds::server();
            const auto view = VexmoraViewFactory::createView("home", "320x60", nullptr);
            QCoreApplication::exec();
        },
        "unexpectedly found nil");
}

}  // namespace
