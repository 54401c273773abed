// SPDX-License-Identifier: MIT
#include "VexmoraSDK/presenting/InterstitialLayout.h"

#include <algorithm>
#include <cmath>

#include "VexmoraSDK/ads/AdProtocol.h"
#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/presenting/AdSize.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"

namespace VexmoraSDK {

using platform::ContentMode;
using platform::ImageView;
using platform::Size;

namespace {

/// The size that a picture should have on the screen, whose own size may be empty.
Size sizeFor(const VexmoraInterstitialView& view, Size picture) {
    const Size screen = view.frame().size;
    const Size named = view.ad() ? sizeOf(view.ad()->adType()) : Size();
    const Size wanted = named == Size() ? picture : named;
    const double scale =
        std::min({1.0, screen.width / wanted.width, screen.height / wanted.height});
    return {wanted.width * scale, wanted.height * scale};
}

}  // namespace

bool isDrawn(const VexmoraView& view) {
    return std::ranges::any_of(view.subviews(), [](const auto& subview) {
        return dynamic_cast<const ImageView*>(subview.get()) != nullptr;
    });
}

void layOutInterstitial(VexmoraView& view, FillMode mode, double pixelsPerPoint) {
    const auto aligned = [pixelsPerPoint](double point) {
        return std::round(point * pixelsPerPoint) / pixelsPerPoint;
    };
    const auto* const interstitial = dynamic_cast<VexmoraInterstitialView*>(&view);
    if (!interstitial) return;
    const auto [width, height] = view.frame().size;
    for (const auto& subview : view.subviews()) {
        auto* const picture = dynamic_cast<ImageView*>(subview.get());
        if (!picture || !picture->image()) continue;
        const bool fits = mode == FillMode::fit;
        const Size natural = picture->image()->size();
        const Size size = fits ? sizeFor(*interstitial, natural) : natural;
        picture->setContentMode(fits ? ContentMode::scaleAspectFit : ContentMode::center);
        picture->setFrame(
            {{aligned((width - size.width) / 2), aligned((height - size.height) / 2)}, size});
    }
}

}  // namespace VexmoraSDK
