// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "VexmoraSDK/platform/foundation/Url.h"

namespace VexmoraSDK::platform::FakeApplication {

/// From now on `opener` is called with each URL that the library opens.
void setOpener(std::function<void(const Url& url)> opener);

}  // namespace VexmoraSDK::platform::FakeApplication
