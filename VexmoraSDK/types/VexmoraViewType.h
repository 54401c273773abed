// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "VexmoraSDK/Export.h"

namespace VexmoraSDK {

/// The kinds of ad view.
enum class VexmoraViewType : std::intptr_t {
    banner = 1,
    interstitial = 2,
    native = 3,
};

constexpr std::intptr_t rawValue(VexmoraViewType viewType) {
    return static_cast<std::intptr_t>(viewType);
}

/// The view type of a raw value; absent if no type has it.
VEXMORA_EXPORT std::optional<VexmoraViewType> viewTypeWithRawValue(std::intptr_t rawValue);

/// The kind of view for each size string, such as "320x60".
VEXMORA_EXPORT const std::map<std::string, VexmoraViewType, std::less<>>& adViewBySize();

}  // namespace VexmoraSDK
