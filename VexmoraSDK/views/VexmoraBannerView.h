// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/ads/Banner.h"
#include "VexmoraSDK/views/InternalAdView.h"

namespace VexmoraSDK {

/// Shows a banner ad: one picture, whose size the view takes.
class VEXMORA_EXPORT VexmoraBannerView : public InternalAdView {
 public:
    static constexpr std::string_view kClassName = "VexmoraSDK.VexmoraBannerView";
    /// `banner`, `mediumBanner` and `fullBanner`, the initial `adTypes`.
    static const std::vector<VexmoraAdType>& allowedAdTypes();

    static std::shared_ptr<VexmoraBannerView> create(platform::Rect frame = {}) {
        return platform::makeSharedOnMain<VexmoraBannerView>(frame);
    }
    explicit VexmoraBannerView(platform::Rect frame);
    /// Makes the view that an interface file describes.
    explicit VexmoraBannerView(const platform::Coder& coder);

    std::string_view className() const override { return kClassName; }

    /// The ad; absent until a request has brought one.
    std::shared_ptr<Banner> ad() const;
    void setAd(std::shared_ptr<Banner> ad) { store(std::move(ad)); }

    void containerSetCallback() override;
    /// Handles a tap on the ad: tells the host and opens the ad's URL. No ad is a fatal stop.
    void handleTap() { open(ad()); }

 protected:
    void draw() override;
    Method method(std::string_view selector) const override;
};

}  // namespace VexmoraSDK
