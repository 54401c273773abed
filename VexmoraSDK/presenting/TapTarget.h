// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/ui/View.h"

namespace VexmoraSDK {

/// Whether the ad view supports a tap at `point`, in the coordinates of `root`. Presenters pass on
/// no other tap: an interstitial supports taps on its close button only, and one on its picture
/// stops the program. Main thread.
VEXMORA_EXPORT bool takesTap(platform::View& root, platform::Point point);

}  // namespace VexmoraSDK
