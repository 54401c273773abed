// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/ads/Native.h"
#include "VexmoraSDK/views/InternalAdView.h"

namespace VexmoraSDK {

namespace platform {
class TextView;
}

/// Shows a native ad: its picture at the left and three texts stacked to its right. The view takes
/// the size of its content.
class VEXMORA_EXPORT VexmoraNativeView : public InternalAdView {
 public:
    static constexpr std::string_view kClassName = "VexmoraSDK.VexmoraNativeView";
    /// `native`, the initial `adTypes`.
    static const std::vector<VexmoraAdType>& allowedAdTypes();

    static std::shared_ptr<VexmoraNativeView> create(platform::Rect frame = {}) {
        return platform::makeSharedOnMain<VexmoraNativeView>(frame);
    }
    explicit VexmoraNativeView(platform::Rect frame);
    /// Makes the view that an interface file describes.
    explicit VexmoraNativeView(const platform::Coder& coder);

    std::string_view className() const override { return kClassName; }

    /// The ad; absent until a request has brought one.
    std::shared_ptr<Native> ad() const;
    void setAd(std::shared_ptr<Native> ad) { store(std::move(ad)); }

    void containerSetCallback() override;
    /// Handles a tap on the ad: tells the host and opens the ad's URL. No ad is a fatal stop.
    void handleTap() { open(ad()); }

    /// The size of the content, whatever is proposed: the texts stacked beside the picture. The
    /// texts' overlap and the gap beside the picture are not subtracted or added.
    platform::Size sizeThatFits(platform::Size proposed) override;

 protected:
    /// Fits an added text to its width and stacks it below the last.
    void didAddSubview(platform::View& subview) override;
    void draw() override;
    Method method(std::string_view selector) const override;

 private:
    /// Lays out the texts of `native` while its picture is on its way.
    void layOutAhead(const std::shared_ptr<Native>& native);

    double lastTextViewYPos_;
    /// Views with the laid out texts of an ad that is not drawn yet. They are never shown.
    std::vector<std::shared_ptr<platform::TextView>> laidOutAhead_;
};

}  // namespace VexmoraSDK
