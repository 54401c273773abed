// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "VexmoraSDK/Export.h"

namespace VexmoraSDK {

/// The ad formats, with the ad server's numbers.
enum class VexmoraAdType : std::intptr_t {
    native = 1,
    mediumRectangle = 14,
    leaderboard = 15,
    banner = 77,
    slideshow = 79,
    mediumBanner = 83,
    fullBanner = 84,
};

constexpr std::intptr_t rawValue(VexmoraAdType adType) {
    return static_cast<std::intptr_t>(adType);
}

/// The raw values of ad types, in their order.
VEXMORA_EXPORT std::vector<std::intptr_t> rawValues(const std::vector<VexmoraAdType>& adTypes);

/// The ad type of a raw value; absent if no type has it.
VEXMORA_EXPORT std::optional<VexmoraAdType> adTypeWithRawValue(std::intptr_t rawValue);

/// The ad types of each size string, such as "320x60".
VEXMORA_EXPORT const std::map<std::string, std::vector<VexmoraAdType>, std::less<>>&
adTypesBySize();

}  // namespace VexmoraSDK

/// The hash of an ad type is its position in the enumeration, counted from 0.
template <>
struct VEXMORA_EXPORT std::hash<VexmoraSDK::VexmoraAdType> {
    std::size_t operator()(VexmoraSDK::VexmoraAdType adType) const noexcept;
};
