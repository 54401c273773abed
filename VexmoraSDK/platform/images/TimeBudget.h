// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace VexmoraSDK::platform {

/// The processor time for decoding one picture: one second of the thread that constructs and asks
/// the budget. An ordinary picture takes a few milliseconds and the largest a fraction of a second;
/// only pictures made to block others take more.
class TimeBudget {
 public:
    TimeBudget();

    /// Whether the budget is spent after work on `pixels` more pixels. The clock is read only now
    /// and then.
    bool isSpentAfter(std::uint64_t pixels);

 private:
    std::int64_t end_;
    std::uint64_t pixelsSinceLook_ = 0;
};

}  // namespace VexmoraSDK::platform
