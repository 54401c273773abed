// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"

class QPainter;

namespace VexmoraSDK::platform {

class View;

/// Paints `view` and its subviews at the painter's origin. Main thread.
VEXMORA_EXPORT void paintView(QPainter& painter, View& view);

}  // namespace VexmoraSDK::platform
