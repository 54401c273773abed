// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include "VexmoraSDK/platform/Font.h"
#include "VexmoraSDK/platform/cairo/CPointers.h"

namespace VexmoraSDK::platform {

/// The font as a Pango font description. Any thread.
FontDescriptionPointer pangoFont(const Font& font);

/// A value that changes when the host adds or removes fonts.
using FontsVersion = std::pair<const void*, int>;
FontsVersion fontsVersion();

}  // namespace VexmoraSDK::platform
