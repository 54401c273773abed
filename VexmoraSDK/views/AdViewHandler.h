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

/// The helper of each ad view: request URLs, subviews, taps.
class AdViewHandler {
 public:
    /// Reads the request template from the settings. A missing one is a fatal stop.
    AdViewHandler();

    /// The request template: "%@" (also "%1$@" and "%2$@") stands for the container identifier and
    /// for the ad types, in this order; "%%" for a percent sign.
    const std::string& requestUrlFormat() const { return requestUrlFormat_; }
    /// Applies to later requests.
    void setRequestUrlFormat(std::string format) { requestUrlFormat_ = std::move(format); }

    /// The request URL of the view. Nothing is escaped. An absent container identifier, or one that
    /// makes the URL invalid, is a fatal stop.
    platform::Url getUrl(const VexmoraView& view) const;

    /// Adds the image, at its natural size at the view's origin, as the frontmost subview.
    std::shared_ptr<platform::ImageView> addImageView(
        VexmoraView& view, std::shared_ptr<const platform::Image> image) const;

    /// Adds a text as the frontmost subview. A font that the device lacks leaves the default font.
    /// The caller sets the colour.
    std::shared_ptr<platform::TextView> addTextView(VexmoraView& view, platform::Rect frame,
                                                    const Utils::Font& font,
                                                    std::optional<std::string> text) const;
    /// Makes the view that `addTextView` adds.
    static std::shared_ptr<platform::TextView> makeTextView(platform::Rect frame,
                                                            const Utils::Font& font,
                                                            std::optional<std::string> text);

    /// Has `adReadyCallback:` sent to the view when the ad's picture has arrived.
    void addObserver(VexmoraView& view, const std::shared_ptr<AdProtocol>& ad) const;

    /// Has `handleTap:` sent to the view for each tap on it.
    void addTapHandler(InternalAdView& view) const;

    /// Tells the host that the user leaves the app, then opens `url`.
    void handleTap(InternalAdView& view, const platform::Url& url) const;

 private:
    std::string requestUrlFormat_;
};

}  // namespace VexmoraSDK
