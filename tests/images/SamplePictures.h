// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

#include "VexmoraSDK/platform/foundation/Data.h"

namespace VexmoraSDK {

/// Small pictures of 19 × 13 pixels, keyed by their peculiarity: "PNG of 16 bits", …
const std::map<std::string, platform::Data>& samplePictures();

/// A CMYK JPEG of 16 × 8 pixels, left half without ink, right half cyan. Adobe's programs add a
/// marker and invert each ink.
platform::Data jpegInInks(bool byAdobe);

/// `jpeg` with an EXIF orientation tag.
platform::Data turnedJpeg(const platform::Data& jpeg, int orientation);

}  // namespace VexmoraSDK
