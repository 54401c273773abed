// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "VexmoraSDK/platform/foundation/Data.h"

namespace VexmoraSDK::benchmarks {

/// From now on the URL session answers requests for `address` with `body`.
void answer(const std::string& address, platform::Data body);

}  // namespace VexmoraSDK::benchmarks
