// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <optional>
#include <utility>

#include "VexmoraSDK/platform/foundation/Geometry.h"

namespace VexmoraSDK {

/// Tells taps from drags. Positions are in coordinates of the scene or the screen, because the item
/// may move under the finger.
class TapTracker {
 public:
    void press(platform::Point position) { pressedAt_ = position; }

    /// A press that moves `dragDistance` or more is a drag.
    void move(platform::Point position, double dragDistance) {
        if (!pressedAt_) return;
        const double moved =
            std::abs(position.x - pressedAt_->x) + std::abs(position.y - pressedAt_->y);
        if (moved >= dragDistance) cancel();
    }

    /// Returns whether the release ended a tap.
    bool release() { return std::exchange(pressedAt_, std::nullopt).has_value(); }

    void cancel() { pressedAt_.reset(); }

 private:
    std::optional<platform::Point> pressedAt_;
};

}  // namespace VexmoraSDK
