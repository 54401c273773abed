// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/AllowedSchemes.h"
#include "VexmoraSDK/platform/foundation/Url.h"

namespace VexmoraSDK::platform::Application {

/// Opens `url`, byte for byte, in the device's application for it. Success is not reported, and the
/// application's end is not waited for. A URL whose scheme is not allowed (`isAllowed`) is not
/// opened. Main thread.
VEXMORA_EXPORT void openUrl(const Url& url);

}  // namespace VexmoraSDK::platform::Application
