// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace VexmoraSDK::platform {

/// The processor time that decoding one picture may take: one second of the thread that constructs
/// and asks it. An ordinary picture takes a few milliseconds, one of the most pixels a fraction of
/// the budget; beyond it are pictures made to keep others from being shown.
class TimeBudget {
 public:
    TimeBudget();

    /// Whether the budget is used up, after work on so many more pixels. The clock is only looked
    /// at now and then.
    bool isSpentAfter(std::uint64_t pixels);

 private:
    std::int64_t end_;
    std::uint64_t pixelsSinceLook_ = 0;
};

}  // namespace VexmoraSDK::platform
