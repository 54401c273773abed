// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/presenting/FillMode.h"
#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

/// Whether an ad was drawn into `view`.
VEXMORA_EXPORT bool isDrawn(const VexmoraView& view);

/// Centres the pictures of an interstitial that is drawn in the frame that it has now. With `fit` a
/// picture gets the size of its ad type, or less on a smaller screen, and is scaled to it; else it
/// has its own size. It begins at a whole pixel, so that it stays sharp. Main thread.
VEXMORA_EXPORT void layOutInterstitial(VexmoraView& view, FillMode mode, double pixelsPerPoint = 1);

}  // namespace VexmoraSDK
