// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/cairo/HostLoop.h"

#include <gmock/gmock.h>

#include <condition_variable>
#include <mutex>
#include <thread>

#include "VexmoraSDK/platform/MainQueue.h"

using std::chrono::microseconds;
using VexmoraSDK::platform::HostLoop;
using VexmoraSDK::platform::MainQueue;

namespace {

void post(std::function<void()> block) {
    MainQueue::main()->async(std::move(block));
}

TEST(HostLoopTest, StopsAtItsBudgetAndReportsBlocksLeft) {
    int wakeUps = 0;
    HostLoop loop([&] { ++wakeUps; });
    EXPECT_FALSE(loop.run(microseconds(0)));
    int ran = 0;
    for (int i = 0; i < 3; ++i)
        post([&] { ++ran; });
    EXPECT_EQ(wakeUps, 1) << "only the first one says so";
    EXPECT_TRUE(loop.run(microseconds(0)));
    EXPECT_EQ(ran, 1);
    EXPECT_EQ(wakeUps, 2) << "for those that are left";
    EXPECT_FALSE(loop.run(microseconds::max()));
    EXPECT_EQ(ran, 3);
    EXPECT_EQ(wakeUps, 2);
}

// A host that sleeps until it is woken misses no block.
TEST(HostLoopTest, WakesASleepingHostForEveryBlock) {
    std::mutex mutex;
    std::condition_variable changed;
    bool woken = false;
    HostLoop loop([&] {
        const std::lock_guard lock(mutex);
        woken = true;
        changed.notify_one();
    });
    constexpr int kBlocks = 10'000;
    int ran = 0;
    std::thread poster([&] {
        for (int i = 0; i < kBlocks; ++i)
            post([&] { ++ran; });
    });
    while (ran < kBlocks) {
        std::unique_lock lock(mutex);
        ASSERT_TRUE(changed.wait_for(lock, std::chrono::minutes(1), [&] { return woken; }));
        woken = false;
        lock.unlock();
        loop.run(microseconds(50));
    }
    poster.join();
}

TEST(HostLoopTest, IsNotWokenAfterItsEndButTheNextOneIs) {
    int wakeUps = 0;
    {
        const HostLoop loop([&] { FAIL(); });
    }
    post([] { FAIL(); });
    HostLoop next([&] { ++wakeUps; });
    EXPECT_EQ(wakeUps, 1) << "to let go of what was left";
    next.run(microseconds(0));
    post([] {});
    EXPECT_EQ(wakeUps, 2);
}

TEST(HostLoopDeathTest, IsTheOnlyOne) {
    const HostLoop loop;
    EXPECT_DEATH(HostLoop(), "there is a HostLoop already");
}

}  // namespace
