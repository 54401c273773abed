// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

#include "VexmoraSDK/platform/foundation/Data.h"

namespace VexmoraSDK {

/// Small pictures of 19 × 13 pixels, by what is particular of them: "PNG of 16 bits", …
const std::map<std::string, platform::Data>& samplePictures();

/// A JPEG in inks of 16 × 8 pixels, of which the left half is paper and the right half cyan.
/// Adobe's programs say so in a marker and write each ink inverted.
platform::Data jpegInInks(bool byAdobe);

/// `jpeg` with the EXIF tag that says how to turn it.
platform::Data turnedJpeg(const platform::Data& jpeg, int orientation);

}  // namespace VexmoraSDK
