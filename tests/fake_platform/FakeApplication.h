#pragma once

#include <functional>

#include "VexmoraSDK/platform/foundation/Url.h"

namespace VexmoraSDK::platform::FakeApplication {

/// From now on `opener` is handed the addresses to open, instead of the device.
void setOpener(std::function<void(const Url& url)> opener);

}  // namespace VexmoraSDK::platform::FakeApplication
