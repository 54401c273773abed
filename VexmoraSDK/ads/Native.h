// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/ads/ImageAd.h"

namespace VexmoraSDK {

/// An ad of a picture and three texts.
class VEXMORA_EXPORT Native : public ImageAd {
 public:
    static constexpr std::string_view kClassName = "VexmoraSDK.Native";
    /// The width of its text views before they are fitted, in points.
    static constexpr double kTextWidth = 188;

    /// Makes a model and starts to load its picture from `imageUrl`.
    static std::shared_ptr<Native> create(platform::Url clickUrl, std::string title,
                                          std::string description, std::string displayName,
                                          const platform::Url& imageUrl);
    /// Not supported: a fatal stop.
    [[noreturn]] Native();

    std::string_view className() const override { return kClassName; }

    void setClickUrl(platform::Url clickUrl) { storeClickUrl(std::move(clickUrl)); }
    const std::string& title() const { return title_; }
    /// The description.
    const std::string& desc() const { return desc_; }
    /// The advertiser's name.
    const std::string& displayName() const { return displayName_; }
    /// Always `native`.
    VexmoraAdType adType() const override { return VexmoraAdType::native; }

    void render(InternalAdView& view) override;

 private:
    Native(platform::Url clickUrl, std::string title, std::string description,
           std::string displayName);

    std::string title_;
    std::string desc_;
    std::string displayName_;
};

}  // namespace VexmoraSDK
