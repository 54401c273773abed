// SPDX-License-Identifier: MIT
#include "VexmoraSDK/presenting/TapTarget.h"

#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

bool takesTap(platform::View& root, platform::Point point) {
    auto target = root.hitTest(point);
    while (target && target->gestureRecognizers().empty())
        target = target->superview();
    if (!target) return false;
    const auto* ad = dynamic_cast<VexmoraView*>(target.get());
    return !ad || ad->viewType() != VexmoraViewType::interstitial;
}

}  // namespace VexmoraSDK
