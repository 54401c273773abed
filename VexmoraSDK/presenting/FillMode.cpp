// SPDX-License-Identifier: MIT
#include "VexmoraSDK/presenting/FillMode.h"

#include <algorithm>

namespace VexmoraSDK {
namespace {

bool isEmpty(platform::Size size) {
    return size.width <= 0 || size.height <= 0;
}

}  // namespace

AdPosition AdPosition::of(FillMode mode, platform::Size ad, platform::Size place, bool mirrored) {
    if (isEmpty(ad) || isEmpty(place)) return {};
    if (mode == FillMode::asIs) return {{mirrored ? place.width - ad.width : 0, 0}};
    const double scale = std::min(place.width / ad.width, place.height / ad.height);
    return {{(place.width - ad.width * scale) / 2, (place.height - ad.height * scale) / 2}, scale};
}

platform::Size preferredSize(FillMode mode, platform::Size ad, platform::Size reserved) {
    if (isEmpty(ad)) return reserved;
    return mode == FillMode::fit && !isEmpty(reserved) ? reserved : ad;
}

}  // namespace VexmoraSDK
