// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/AllowedSchemes.h"
#include "VexmoraSDK/platform/foundation/Url.h"

namespace VexmoraSDK::platform::Application {

/// Opens an address in the application that the device has for it, byte for byte; whether that
/// succeeds is not told. An address whose scheme is not allowed (`isAllowed`) is not opened.
/// Does not wait for what it starts. Main thread.
VEXMORA_EXPORT void openUrl(const Url& url);

}  // namespace VexmoraSDK::platform::Application
