// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "VexmoraSDK/platform/foundation/Data.h"

namespace VexmoraSDK::benchmarks {

/// Makes the URL session respond to requests for `address` with `body`.
void answer(const std::string& address, platform::Data body);

}  // namespace VexmoraSDK::benchmarks
