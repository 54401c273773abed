// SPDX-License-Identifier: MIT
#include "VexmoraSDK/Version.h"

namespace VexmoraSDK {

std::string_view version() noexcept {
    return VEXMORASDK_VERSION;
}

}  // namespace VexmoraSDK
