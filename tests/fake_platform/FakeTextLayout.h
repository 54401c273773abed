// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "VexmoraSDK/platform/Font.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"

namespace VexmoraSDK::platform::FakeTextLayout {

/// Returns the sizes of a text's lines within a width.
using Rule = std::function<Size(const std::string& text, const Font& font, double width)>;

/// Texts that are laid out from now on are measured by `rule`. Main thread.
void measureBy(Rule rule);

/// How often texts were prepared for.
int preparationCount();

/// The rule at first: each byte is half the font's size wide, each line is as high as the font's
/// size, and lines break anywhere.
Size measureByBytes(const std::string& text, const Font& font, double width);

}  // namespace VexmoraSDK::platform::FakeTextLayout
