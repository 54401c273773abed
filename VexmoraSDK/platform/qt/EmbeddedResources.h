// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"

namespace VexmoraSDK::platform {

/// Writes the resources that CMake's `vexmora_embed_resources` has put into the app to the app's
/// data folder, and makes that the library's folder (`Bundle::setLibraryFolder`). Call it on the
/// main thread, after the application object has its name and before the first ad view. Returns
/// false if there are none or they cannot be written.
VEXMORA_EXPORT bool useEmbeddedResources();

}  // namespace VexmoraSDK::platform
