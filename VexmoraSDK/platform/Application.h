#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Url.h"

namespace VexmoraSDK::platform::Application {

/// Opens an address in the application that the device has for it; whether that succeeds is not
/// told. An address that reaches into the device instead of out of it is not opened: `file:`,
/// `javascript:`, `data:`, and a relative reference, which would name a file. Main thread.
VEXMORA_EXPORT void openUrl(const Url& url);

}  // namespace VexmoraSDK::platform::Application
