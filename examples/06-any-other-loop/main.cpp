// SPDX-License-Identifier: MIT
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <vector>

#include "VexmoraSDK/platform/cairo/HostLoop.h"
#include "VexmoraSDK/platform/cairo/ViewPainter.h"
#include "VexmoraSDK/presenting/AdSlot.h"
#include "VexmoraSDK/presenting/TapTarget.h"

using namespace VexmoraSDK;

// A banner in a plain pixel buffer, for engines of every kind. The loop sleeps until the library
// has something to do.
int main() {
    std::mutex mutex;
    std::condition_variable changed;
    bool woken = false;
    platform::HostLoop loop([&] {
        const std::lock_guard lock(mutex);
        woken = true;
        changed.notify_one();
    });

    AdSlot slot{AdSlot::Delegate()};
    slot.setPlacement({.containerId = "home-bottom", .adSize = "320x60"});
    slot.setVisibleFraction(1);
    for (;;) {
        loop.run(std::chrono::milliseconds(1));
        const auto next = AdSlot::wakeAll().value_or(std::chrono::hours(1));
        if (slot.state() != AdSlot::State::loading) break;
        std::unique_lock lock(mutex);
        changed.wait_for(lock, next, [&] { return woken; });
        woken = false;
    }
    if (!slot.view()) return 1;

    // Two pixels per point. The view calls its display callback when it must be painted again.
    constexpr int kWidth = 640;
    constexpr int kHeight = 120;
    std::vector<std::uint32_t> pixels(kWidth * kHeight);
    platform::paintView({pixels.data(), kWidth, kHeight, 4 * kWidth}, 2, *slot.view());
    std::printf("painted %zu pixels\n", pixels.size());

    const platform::Point finger = {10, 10};
    if (takesTap(*slot.view(), finger)) slot.view()->tap(finger);
    return 0;
}
