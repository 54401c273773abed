// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/images/TimeBudget.h"

#include <ctime>

namespace VexmoraSDK::platform {
namespace {

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
constexpr std::uint64_t kPixelsBetweenLooks = 250'000;

std::int64_t processorTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return time.tv_sec * kNanosecondsPerSecond + time.tv_nsec;
}

}  // namespace

TimeBudget::TimeBudget() : end_(processorTime() + kNanosecondsPerSecond) {}

bool TimeBudget::isSpentAfter(std::uint64_t pixels) {
    pixelsSinceLook_ += pixels;
    if (pixelsSinceLook_ < kPixelsBetweenLooks) return false;
    pixelsSinceLook_ = 0;
    return processorTime() > end_;
}

}  // namespace VexmoraSDK::platform
