// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include "VexmoraSDK/platform/Font.h"
#include "VexmoraSDK/platform/cairo/CPointers.h"

namespace VexmoraSDK::platform {

/// The font as Pango lays texts out in it. Any thread.
FontDescriptionPointer pangoFont(const Font& font);

/// Another one once the host has added fonts of its own or taken them away.
using FontsVersion = std::pair<const void*, int>;
FontsVersion fontsVersion();

}  // namespace VexmoraSDK::platform
