// SPDX-License-Identifier: MIT
#include "VexmoraSDK/ads/ImageAd.h"

#include "VexmoraSDK/ads/AdHandler.h"

namespace VexmoraSDK {

ImageAd::ImageAd(platform::Url clickUrl)
    : delegate_(std::make_shared<AdHandler>()), clickUrl_(std::move(clickUrl)) {}

}  // namespace VexmoraSDK
