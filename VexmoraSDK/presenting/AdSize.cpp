// SPDX-License-Identifier: MIT
#include "VexmoraSDK/presenting/AdSize.h"

#include <algorithm>
#include <charconv>

namespace VexmoraSDK {

platform::Size sizeOf(VexmoraAdType adType) {
    for (const auto& [adSize, types] : adTypesBySize()) {
        if (!std::ranges::count(types, adType)) continue;
        int width = 0;
        int height = 0;
        const char* const end = adSize.data() + adSize.size();
        const char* const x = std::from_chars(adSize.data(), end, width).ptr;
        std::from_chars(x + 1, end, height);
        return {double(width), double(height)};
    }
    return {};
}

}  // namespace VexmoraSDK
