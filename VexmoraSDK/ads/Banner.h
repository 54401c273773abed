// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/ads/ImageAd.h"

namespace VexmoraSDK {

/// An ad that is one picture.
class VEXMORA_EXPORT Banner : public ImageAd {
 public:
    static constexpr std::string_view kClassName = "VexmoraSDK.Banner";

    /// Makes a model and starts to load its picture from `bannerUrl`.
    static std::shared_ptr<Banner> create(platform::Url clickUrl, platform::Url bannerUrl,
                                          VexmoraAdType adType);
    /// Not supported: a fatal stop.
    [[noreturn]] Banner();

    std::string_view className() const override { return kClassName; }

    const platform::Url& bannerUrl() const { return bannerUrl_; }
    /// The type that the server reported.
    VexmoraAdType adType() const override { return adType_; }

    /// Adds the picture at its natural size at the view's origin; in an interstitial view, centred.
    /// An absent picture is a fatal stop. Main thread.
    void render(InternalAdView& view) override;

 private:
    Banner(platform::Url clickUrl, platform::Url bannerUrl, VexmoraAdType adType);

    platform::Url bannerUrl_;
    VexmoraAdType adType_;
};

}  // namespace VexmoraSDK
