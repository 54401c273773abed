// SPDX-License-Identifier: MIT
#include "VexmoraSDK/types/VexmoraAdType.h"

#include <algorithm>
#include <array>

#include "VexmoraSDK/platform/foundation/NoDestructor.h"

namespace VexmoraSDK {
namespace {

constexpr std::array kAdTypes = {
    VexmoraAdType::native,     VexmoraAdType::mediumRectangle, VexmoraAdType::leaderboard,
    VexmoraAdType::banner,     VexmoraAdType::slideshow,       VexmoraAdType::mediumBanner,
    VexmoraAdType::fullBanner,
};

}  // namespace

std::vector<std::intptr_t> rawValues(const std::vector<VexmoraAdType>& adTypes) {
    std::vector<std::intptr_t> values;
    values.reserve(adTypes.size());
    for (const auto adType : adTypes)
        values.push_back(rawValue(adType));
    return values;
}

std::optional<VexmoraAdType> adTypeWithRawValue(std::intptr_t value) {
    const auto found = std::ranges::find(kAdTypes, value, rawValue);
    if (found == kAdTypes.end()) return std::nullopt;
    return *found;
}

const std::map<std::string, std::vector<VexmoraAdType>, std::less<>>& adTypesBySize() {
    using Table = std::map<std::string, std::vector<VexmoraAdType>, std::less<>>;
    static const platform::NoDestructor<Table> table(Table{
        {"300x250", {VexmoraAdType::mediumRectangle}},
        {"728x90", {VexmoraAdType::leaderboard}},
        {"320x60", {VexmoraAdType::banner}},
        {"320x100", {VexmoraAdType::mediumBanner}},
        {"468x60", {VexmoraAdType::fullBanner}},
    });
    return *table;
}

}  // namespace VexmoraSDK

std::size_t std::hash<VexmoraSDK::VexmoraAdType>::operator()(
    VexmoraSDK::VexmoraAdType adType) const noexcept {
    using VexmoraSDK::kAdTypes;
    return static_cast<std::size_t>(std::ranges::find(kAdTypes, adType) - kAdTypes.begin());
}
