// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/presenting/FillMode.h"
#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

/// Whether an ad was drawn into `view`.
VEXMORA_EXPORT bool isDrawn(const VexmoraView& view);

/// Centres the pictures of a drawn interstitial in its current frame, each starting at a whole
/// pixel so that it stays sharp. `fit` scales a picture to the size of its ad type, or less on a
/// smaller screen; `asIs` keeps its own size. Main thread.
VEXMORA_EXPORT void layOutInterstitial(VexmoraView& view, FillMode mode, double pixelsPerPoint = 1);

}  // namespace VexmoraSDK
