// SPDX-License-Identifier: MIT
#include <iostream>
#include <string>

#include "VexmoraSDK/VexmoraSDK.h"

// Well when the package that CMake has found, its header and its library tell one version.
int main() {
    const auto numbers = std::to_string(VEXMORASDK_VERSION_MAJOR) + '.' +
                         std::to_string(VEXMORASDK_VERSION_MINOR) + '.' +
                         std::to_string(VEXMORASDK_VERSION_PATCH);
    std::cout << "found " FOUND_VERSION ", compiled with " VEXMORASDK_VERSION ", which is "
              << numbers << ", and running with " << VexmoraSDK::version() << '\n';
    const bool isOne = numbers == FOUND_VERSION && numbers == VEXMORASDK_VERSION &&
                       numbers == VexmoraSDK::version();
    return isOne ? 0 : 1;
}
