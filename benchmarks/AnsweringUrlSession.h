#pragma once

#include <string>

#include "VexmoraSDK/platform/foundation/Data.h"

namespace VexmoraSDK::benchmarks {

/// What the platform's session answers from now on when it is asked for `address`.
void answer(const std::string& address, platform::Data body);

}  // namespace VexmoraSDK::benchmarks
