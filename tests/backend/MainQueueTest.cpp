// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/MainQueue.h"

#include <atomic>
#include <optional>
#include <thread>
#include <vector>

#include "tests/AppTest.h"

using testing::ElementsAre;
using VexmoraSDK::App;
using VexmoraSDK::AppTest;
using VexmoraSDK::platform::MainQueue;

namespace {

using MainQueueTest = AppTest;

/// An object that blocks hold. It records the thread on which it is destroyed.
class Held {
 public:
    std::function<void()> block() {
        return [this, held = std::move(held_)] { ran_ = true; };
    }

    bool ran() const { return ran_; }
    bool isDestroyed() const { return destroyedOn_.has_value(); }
    bool isDestroyedHere() const { return destroyedOn_ == std::this_thread::get_id(); }

 private:
    bool ran_ = false;
    std::optional<std::thread::id> destroyedOn_;
    std::shared_ptr<void> held_{
        this, [](Held* self) { self->destroyedOn_ = std::this_thread::get_id(); }};
};

void inAnotherThread(std::function<void()> work) {
    std::thread(std::move(work)).join();
}

TEST_F(MainQueueTest, KnowsItsThreadAndItsBlocks) {
    auto& queue = *MainQueue::main();
    EXPECT_TRUE(queue.isMainThread());
    EXPECT_FALSE(queue.isRunningBlock());
    inAnotherThread([&] { EXPECT_FALSE(queue.isMainThread()); });

    bool ran = false;
    queue.async([&] {
        EXPECT_TRUE(queue.isRunningBlock());
        inAnotherThread([&] { EXPECT_FALSE(queue.isRunningBlock()); });
        ran = true;
    });
    EXPECT_TRUE(App::waitFor([&] { return ran; }));
    EXPECT_FALSE(queue.isRunningBlock());
}

TEST_F(MainQueueTest, RunsBlocksLaterInOrderAndInNestedEventLoops) {
    std::vector<int> ran;
    bool isDialogOpen = true;
    MainQueue::main()->async([&] {
        ran.push_back(1);
        EXPECT_TRUE(App::waitFor([&] { return !isDialogOpen; }));
        EXPECT_TRUE(MainQueue::main()->isRunningBlock());
        ran.push_back(4);
    });
    // This block is already queued when the other starts its event loop.
    MainQueue::main()->async([&] {
        ran.push_back(2);
        MainQueue::main()->async([&] {
            ran.push_back(3);
            isDialogOpen = false;
        });
    });
    EXPECT_TRUE(ran.empty());
    EXPECT_TRUE(App::waitFor([&] { return ran.size() == 4; }));
    EXPECT_THAT(ran, ElementsAre(1, 2, 3, 4));
}

TEST_F(MainQueueTest, ReleasesReferencesOnItsThread) {
    Held here;
    MainQueue::release(std::make_shared<std::function<void()>>(here.block()));
    EXPECT_TRUE(here.isDestroyedHere());

    Held elsewhere;
    inAnotherThread(
        [&] { MainQueue::release(std::make_shared<std::function<void()>>(elsewhere.block())); });
    EXPECT_FALSE(elsewhere.isDestroyed());
    EXPECT_TRUE(App::waitFor([&] { return elsewhere.isDestroyed(); }));
    EXPECT_TRUE(elsewhere.isDestroyedHere());
}

// Starts and ends of applications, each in a process of its own.

void expectInItsOwnProcess(void (*test)()) {
    const auto run = [test] {
        test();
        std::exit(testing::Test::HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

TEST(MainQueueDeathTest, DropsBlocksAfterTheOnlyApplication) {
    expectInItsOwnProcess([] {
        { const App app; }
        ASSERT_TRUE(MainQueue::main());
        Held late;
        MainQueue::main()->async(late.block());
        EXPECT_FALSE(late.ran() || late.isDestroyed());
    });
}

TEST(MainQueueDeathTest, IsFoundByAnotherThreadFirst) {
    expectInItsOwnProcess([] {
        const App app;
        std::optional<bool> isMain;
        inAnotherThread(
            [&] { MainQueue::main()->async([&] { isMain = MainQueue::main()->isMainThread(); }); });
        EXPECT_TRUE(App::waitFor([&] { return isMain; }));
        EXPECT_TRUE(isMain.value_or(false));
    });
}

TEST(MainQueueDeathTest, IsAbsentUntilAnApplicationStartsAndKeepsWhatIsLeftForTheNextOne) {
    expectInItsOwnProcess([] {
        EXPECT_FALSE(MainQueue::main());
        Held queued;
        Held late;
        {
            const App app;
            MainQueue::main()->async(queued.block());
        }
        inAnotherThread([&] { MainQueue::main()->async(late.block()); });
        EXPECT_FALSE(queued.isDestroyed() || late.isDestroyed());

        const App next;
        App::runQueuedBlocks();
        EXPECT_TRUE(queued.isDestroyedHere() && late.isDestroyedHere());
        EXPECT_FALSE(queued.ran() || late.ran());
    });
}

TEST(MainQueueDeathTest, TakesBlocksWhileApplicationsComeAndGo) {
    expectInItsOwnProcess([] {
        std::optional<App> app(std::in_place);
        std::atomic<int> ran = 0;
        std::atomic<bool> stop = false;
        std::thread poster([&] {
            while (!stop) {
                MainQueue::main()->async([&] { ++ran; });
                std::this_thread::yield();
            }
        });
        for (int i = 0; i < 10; ++i) {
            const int before = ran;
            EXPECT_TRUE(App::waitFor([&] { return ran > before; }));
            app.reset();
            app.emplace();
        }
        stop = true;
        poster.join();
    });
}

}  // namespace
