// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/platform/foundation/Geometry.h"
#include "VexmoraSDK/types/VexmoraAdType.h"

namespace VexmoraSDK {

/// The size of the ads of a type, in points; empty for types without a fixed size.
platform::Size sizeOf(VexmoraAdType adType);

}  // namespace VexmoraSDK
