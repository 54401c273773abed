// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/Font.h"

#include <algorithm>
#include <array>

namespace VexmoraSDK::platform {

std::optional<Font> Font::named(std::string_view name, double size) {
    constexpr std::array<std::string_view, 2> kInstalled = {"Helvetica", "Times"};
    const auto dash = std::min(name.find('-'), name.size());
    const auto family = name.substr(0, dash);
    if (std::ranges::find(kInstalled, family) == kInstalled.end()) return std::nullopt;
    const auto style = dash < name.size() ? name.substr(dash + 1) : std::string_view();
    return Font(std::string(family), std::string(style), size);
}

Font Font::system(double size) {
    return Font("System", "", size);
}

}  // namespace VexmoraSDK::platform
