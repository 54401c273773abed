// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"

namespace VexmoraSDK {

/// How an ad lies in the place that its presenter has for it.
enum class FillMode : int {
    asIs = 0,  ///< in its own size, at the top left of the place
    fit = 1,   ///< as large as fits with its proportions kept, centred
};

/// Where in its place an ad is painted.
struct VEXMORA_EXPORT AdPosition {
    /// Of the ad's top left, in points of the place.
    platform::Point origin;
    /// How many points of the place one point of the ad takes.
    double scale = 1;

    /// The position of an ad of the size `ad` in a place of the size `place`. An ad without a size
    /// is not scaled. In a place that is mirrored, as in apps that are read from right to left,
    /// `asIs` is at the top right.
    static AdPosition of(FillMode mode, platform::Size ad, platform::Size place,
                         bool mirrored = false);

    /// The point of the ad that is at a point of the place.
    platform::Point toAd(platform::Point point) const {
        return {(point.x - origin.x) / scale, (point.y - origin.y) / scale};
    }
};

/// The size that a place should have: `reserved`, which may be empty, until there is an ad. With
/// `fit` the place keeps it then, else it takes the ad's.
VEXMORA_EXPORT platform::Size preferredSize(FillMode mode, platform::Size ad,
                                            platform::Size reserved);

}  // namespace VexmoraSDK
