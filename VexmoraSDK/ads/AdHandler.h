// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "VexmoraSDK/platform/foundation/Url.h"

namespace VexmoraSDK {

class ImageAd;

/// Loads the picture of an ad model.
class AdHandler {
 public:
    /// Fetches and decodes the picture at `imageUrl`, sets it as the image of `ad`, absent when the
    /// bytes are no picture, and posts "adReady" with `ad` as the sender, all on a delivery thread.
    /// Returns at once; holds `ad` meanwhile. When the fetch fails nothing happens, ever.
    void setImage(std::shared_ptr<ImageAd> ad, const platform::Url& imageUrl);
};

}  // namespace VexmoraSDK
