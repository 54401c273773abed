// SPDX-License-Identifier: MIT
#include "VexmoraSDK/types/VexmoraViewType.h"

#include "VexmoraSDK/platform/foundation/NoDestructor.h"

namespace VexmoraSDK {

std::optional<VexmoraViewType> viewTypeWithRawValue(std::intptr_t value) {
    if (value < rawValue(VexmoraViewType::banner) || value > rawValue(VexmoraViewType::native)) {
        return std::nullopt;
    }
    return static_cast<VexmoraViewType>(value);
}

const std::map<std::string, VexmoraViewType, std::less<>>& adViewBySize() {
    using Table = std::map<std::string, VexmoraViewType, std::less<>>;
    static const platform::NoDestructor<Table> table(Table{
        {"300x250", VexmoraViewType::interstitial},
        {"728x90", VexmoraViewType::interstitial},
        {"320x60", VexmoraViewType::banner},
        {"320x100", VexmoraViewType::banner},
        {"468x60", VexmoraViewType::banner},
    });
    return *table;
}

}  // namespace VexmoraSDK
