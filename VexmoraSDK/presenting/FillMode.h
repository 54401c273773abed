// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"

namespace VexmoraSDK {

/// How an ad fills the place that its presenter has for it.
enum class FillMode : int {
    asIs = 0,  ///< in its own size, at the top left of the place
    fit = 1,   ///< as large as fits with its proportions kept, centred
};

/// The position at which an ad is painted in its place.
struct VEXMORA_EXPORT AdPosition {
    /// The ad's top left corner, in points of the place.
    platform::Point origin;
    /// The number of the place's points in one point of the ad.
    double scale = 1;

    /// The position of an ad of the size `ad` in a place of the size `place`. An ad without a size
    /// is not scaled. In a mirrored place, for right-to-left layouts, `asIs` is at the top right.
    static AdPosition of(FillMode mode, platform::Size ad, platform::Size place,
                         bool mirrored = false);

    /// Converts a point of the place to one of the ad.
    platform::Point toAd(platform::Point point) const {
        return {(point.x - origin.x) / scale, (point.y - origin.y) / scale};
    }
};

/// The size that a place should have. Before the first ad it is `reserved`, which may be empty;
/// `fit` keeps that size, `asIs` takes the ad's.
VEXMORA_EXPORT platform::Size preferredSize(FillMode mode, platform::Size ad,
                                            platform::Size reserved);

}  // namespace VexmoraSDK
