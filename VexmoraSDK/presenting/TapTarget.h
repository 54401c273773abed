// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/ui/View.h"

namespace VexmoraSDK {

/// Whether a tap at `point`, in the coordinates of `root`, does anything that an ad view supports.
/// Presenters hand in no other. An interstitial supports taps on its close button alone: one that
/// is on its picture stops the program. Main thread.
VEXMORA_EXPORT bool takesTap(platform::View& root, platform::Point point);

}  // namespace VexmoraSDK
