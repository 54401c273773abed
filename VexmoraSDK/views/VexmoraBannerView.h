#pragma once

#include "VexmoraSDK/ads/Banner.h"
#include "VexmoraSDK/views/AdView.h"

namespace VexmoraSDK {

/// Shows a banner ad: one picture, whose size the view takes.
class VexmoraBannerView : public AdView<Banner> {
 public:
    static constexpr std::string_view kClassName = "VexmoraSDK.VexmoraBannerView";
    /// `banner`, `mediumBanner`, `fullBanner`; what `adTypes` is at first.
    static const std::vector<VexmoraAdType>& allowedAdTypes();

    static std::shared_ptr<VexmoraBannerView> create(platform::Rect frame = {});
    explicit VexmoraBannerView(platform::Rect frame);

    std::string_view className() const override { return kClassName; }

    void containerSetCallback() override;
    /// The ad was tapped: tells the host and opens the ad's address. No ad is a fatal stop.
    void handleTap();

 protected:
    void draw() override;
    Method method(std::string_view selector) const override;
};

}  // namespace VexmoraSDK
