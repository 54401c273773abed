// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "VexmoraSDK/ads/AdProtocol.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"
#include "VexmoraSDK/platform/foundation/Url.h"
#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/platform/ui/TextView.h"
#include "VexmoraSDK/utils/Utils.h"

namespace VexmoraSDK {

class InternalAdView;
class VexmoraView;

/// The helper that every ad view owns.
class AdViewHandler {
 public:
    /// Takes the template of the request address from the settings; without one, a fatal stop.
    AdViewHandler();

    /// The template of the request address: "%@" (also "%1$@" and "%2$@") stands for the container
    /// identifier and for the ad types, in this order, "%%" for a percent sign.
    const std::string& requestUrlFormat() const { return requestUrlFormat_; }
    /// For the requests from now on.
    void setRequestUrlFormat(std::string format) { requestUrlFormat_ = std::move(format); }

    /// The request address of the view. Nothing is escaped. An absent container identifier, or one
    /// that makes no valid address, is a fatal stop.
    platform::Url getUrl(const VexmoraView& view) const;

    /// Adds the image, at its natural size at the view's origin, as the frontmost subview.
    std::shared_ptr<platform::ImageView> addImageView(
        VexmoraView& view, std::shared_ptr<const platform::Image> image) const;

    /// Adds a text as the frontmost subview. A font that the device does not know leaves the
    /// default one; the font's colour is left to the caller.
    std::shared_ptr<platform::TextView> addTextView(VexmoraView& view, platform::Rect frame,
                                                    const Utils::Font& font,
                                                    std::optional<std::string> text) const;

    /// From now on the view is sent `adReadyCallback:` when the ad's picture has arrived.
    void addObserver(VexmoraView& view, const std::shared_ptr<AdProtocol>& ad) const;

    /// From now on a tap on the view sends it `handleTap:`.
    void addTapHandler(InternalAdView& view) const;

    /// Tells the host that the user leaves, then opens the address.
    void handleTap(InternalAdView& view, const platform::Url& url) const;

 private:
    std::string requestUrlFormat_;
};

}  // namespace VexmoraSDK
