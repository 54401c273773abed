#pragma once

#include <functional>
#include <string>

#include "VexmoraSDK/platform/Font.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"

namespace VexmoraSDK::platform::FakeTextLayout {

/// Says what the lines of a text take within a width.
using Rule = std::function<Size(const std::string& text, const Font& font, double width)>;

/// Texts laid out from now on measure as `rule` says. Main thread.
void measureBy(Rule rule);

/// The rule at first: every byte is half the font's size wide, every line as high as the font's
/// size, and lines break anywhere.
Size measureByBytes(const std::string& text, const Font& font, double width);

}  // namespace VexmoraSDK::platform::FakeTextLayout
