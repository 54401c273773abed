// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"

namespace VexmoraSDK::platform {

/// For apps that carry the library's resources inside themselves, as `vexmora_embed_resources` of
/// CMake puts them there: writes them to the app's data folder and names that folder as the
/// library's (`Bundle::setLibraryFolder`). Call it after the application object and its name are
/// there and before the first ad view is made; main thread. False when there are none or they
/// cannot be written.
VEXMORA_EXPORT bool useEmbeddedResources();

}  // namespace VexmoraSDK::platform
