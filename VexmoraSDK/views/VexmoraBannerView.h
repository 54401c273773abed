#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/views/FetchedAdView.h"

namespace VexmoraSDK {

/// Shows a banner ad: one picture, whose size the view takes.
class VEXMORA_EXPORT VexmoraBannerView
    : public FetchedAdView<Banner, &AdFactory::fetchAndCreateBanner> {
 public:
    static constexpr std::string_view kClassName = "VexmoraSDK.VexmoraBannerView";
    /// `banner`, `mediumBanner`, `fullBanner`; what `adTypes` is at first.
    static const std::vector<VexmoraAdType>& allowedAdTypes();

    static std::shared_ptr<VexmoraBannerView> create(platform::Rect frame = {});
    explicit VexmoraBannerView(platform::Rect frame);
    /// As an interface file describes it.
    explicit VexmoraBannerView(const platform::Coder& coder);

    std::string_view className() const override { return kClassName; }

 protected:
    void draw() override;
};

}  // namespace VexmoraSDK
