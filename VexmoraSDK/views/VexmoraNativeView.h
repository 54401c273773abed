#pragma once

#include "VexmoraSDK/ads/Native.h"
#include "VexmoraSDK/views/AdView.h"

namespace VexmoraSDK {

/// Shows a native ad: its picture and three texts.
class VexmoraNativeView : public AdView<Native> {
 public:
    static constexpr std::string_view kClassName = "VexmoraSDK.VexmoraNativeView";
    /// `native`; what `adTypes` is at first.
    static const std::vector<VexmoraAdType>& allowedAdTypes();

    static std::shared_ptr<VexmoraNativeView> create(platform::Rect frame = {});
    explicit VexmoraNativeView(platform::Rect frame);

    std::string_view className() const override { return kClassName; }

    void containerSetCallback() override;
    /// The ad was tapped: tells the host and opens the ad's address. No ad is a fatal stop.
    void handleTap();

 protected:
    void draw() override;
    Method method(std::string_view selector) const override;
};

}  // namespace VexmoraSDK
