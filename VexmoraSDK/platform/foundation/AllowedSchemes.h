// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Url.h"

namespace VexmoraSDK::platform::Application {

/// Allows that ads open addresses of that scheme, "myapp" for instance, when they are tapped.
/// Allowed from the start are http, https, mailto, tel, sms, geo and market: with any other scheme
/// an ad server could reach into the device or into a program that is installed on it. Case does
/// not matter; a text that is no scheme is ignored. Any thread; once, before the first ad.
VEXMORA_EXPORT void allowScheme(std::string_view scheme);

/// Whether the address may be opened; never so for a relative reference. Any thread.
bool isAllowed(const Url& url);

}  // namespace VexmoraSDK::platform::Application
