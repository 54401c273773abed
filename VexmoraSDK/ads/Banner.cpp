// SPDX-License-Identifier: MIT
#include "VexmoraSDK/ads/Banner.h"

#include "VexmoraSDK/ads/AdHandler.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/views/AdViewHandler.h"
#include "VexmoraSDK/views/InternalAdView.h"

namespace VexmoraSDK {

std::shared_ptr<Banner> Banner::create(platform::Url clickUrl, platform::Url bannerUrl,
                                       VexmoraAdType adType) {
    std::shared_ptr<Banner> banner(new Banner(std::move(clickUrl), std::move(bannerUrl), adType));
    banner->delegate()->setImage(banner, banner->bannerUrl());
    return banner;
}

Banner::Banner(platform::Url clickUrl, platform::Url bannerUrl, VexmoraAdType adType)
    : ImageAd(std::move(clickUrl)), bannerUrl_(std::move(bannerUrl)), adType_(adType) {}

Banner::Banner()
    : Banner(unavailable(kClassName), unavailable(kClassName), VexmoraAdType::banner) {}

void Banner::render(InternalAdView& view) {
    const auto& handler = *view.vexmoraDelegate();
    auto picture = image();
    platform::unwrap(picture, "picture", bannerUrl_.text());
    const auto imageView = handler.addImageView(view, std::move(picture));
    if (view.viewType() == VexmoraViewType::interstitial) {
        imageView->setContentMode(platform::ContentMode::center);
        // The centre is in the superview's coordinates, so the picture is centred only in a view
        // whose origin is (0, 0).
        imageView->setCenter(view.center());
    }
}

}  // namespace VexmoraSDK
