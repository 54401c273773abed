// SPDX-License-Identifier: MIT
#include "VexmoraSDK/ads/ImageAd.h"

#include "VexmoraSDK/ads/AdHandler.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"

namespace VexmoraSDK {

ImageAd::ImageAd(platform::Url clickUrl)
    : delegate_(std::make_shared<AdHandler>()), clickUrl_(std::move(clickUrl)) {}

platform::Url ImageAd::unavailable(std::string_view className) {
    const platform::FatalContext context("constructor of", className);
    platform::unimplementedInitializer("init()", className);
}

}  // namespace VexmoraSDK
