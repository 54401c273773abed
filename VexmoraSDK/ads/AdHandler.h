// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "VexmoraSDK/platform/foundation/Url.h"

namespace VexmoraSDK {

class ImageAd;

/// Loads the picture of an ad model.
class AdHandler {
 public:
    /// Fetches and decodes the picture at `imageUrl`, sets the image of `ad` (absent if the bytes
    /// are no picture) and posts "adReady" with `ad` as the sender, all on a delivery thread.
    /// Returns at once and holds `ad` until then. If the fetch fails, nothing is posted.
    void setImage(std::shared_ptr<ImageAd> ad, const platform::Url& imageUrl);
};

}  // namespace VexmoraSDK
