// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <optional>
#include <utility>

#include "VexmoraSDK/platform/foundation/Geometry.h"

namespace VexmoraSDK {

/// Tells taps from drags. Positions are those of a finger or a mouse in its scene or on its screen,
/// which stay the same when what is touched moves away under it.
class TapTracker {
 public:
    void press(platform::Point position) { pressedAt_ = position; }

    /// A press that has moved as far as `dragDistance` is a drag.
    void move(platform::Point position, double dragDistance) {
        if (!pressedAt_) return;
        const double moved =
            std::abs(position.x - pressedAt_->x) + std::abs(position.y - pressedAt_->y);
        if (moved >= dragDistance) cancel();
    }

    /// Whether that was a tap.
    bool release() { return std::exchange(pressedAt_, std::nullopt).has_value(); }

    void cancel() { pressedAt_.reset(); }

 private:
    std::optional<platform::Point> pressedAt_;
};

}  // namespace VexmoraSDK
