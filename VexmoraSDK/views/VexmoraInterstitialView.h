// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/views/InternalAdView.h"

namespace VexmoraSDK {

namespace platform {
class Button;
}  // namespace platform

/// Shows a full-screen ad on a screen that the host presents, with a button that closes it. The
/// picture is centred when it is drawn, so set the frame, at (0, 0), before. Once there is an ad, a
/// tap anywhere but on the button is a fatal stop.
class VEXMORA_EXPORT VexmoraInterstitialView : public InternalAdView {
 public:
    static constexpr std::string_view kClassName = "VexmoraSDK.VexmoraInterstitialView";
    /// `leaderboard`, `mediumRectangle`. A view whose `adTypes` were not set requests those of a
    /// banner view.
    static const std::vector<VexmoraAdType>& allowedAdTypes();

    static std::shared_ptr<VexmoraInterstitialView> create(platform::Rect frame = {}) {
        return platform::makeSharedOnMain<VexmoraInterstitialView>(frame);
    }
    explicit VexmoraInterstitialView(platform::Rect frame);
    /// Makes the view that an interface file describes.
    explicit VexmoraInterstitialView(const platform::Coder& coder);

    std::string_view className() const override { return kClassName; }

    void setAd(std::shared_ptr<AdProtocol> ad) { store(std::move(ad)); }

    /// The outlet that the interface file sets; absent in a view made without one.
    const std::shared_ptr<platform::Button>& closeButton() const { return closeButton_; }
    void setCloseButton(std::shared_ptr<platform::Button> button) {
        closeButton_ = std::move(button);
    }

    void containerSetCallback() override;
    /// The close button was tapped: tells the host, has the window's root view controller dismiss
    /// the screen, and tells the host again once it has gone. Without a window only the first
    /// happens.
    void handleCloseTap();

    void setOutlet(std::string_view outlet, const std::shared_ptr<Object>& object) override;

 protected:
    Method method(std::string_view selector) const override;

 private:
    void handleResponse(const platform::Data& body);

    std::shared_ptr<platform::Button> closeButton_;
};

}  // namespace VexmoraSDK
