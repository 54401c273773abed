// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string_view>

#include "VexmoraSDK/platform/foundation/Bundle.h"

namespace VexmoraSDK {

/// Names one of the test's library folders as the library's own.
inline void useLibraryFolder(std::string_view name) {
    platform::Bundle::setLibraryFolder(std::filesystem::path(VEXMORA_TEST_RESOURCES) / name);
}

}  // namespace VexmoraSDK
