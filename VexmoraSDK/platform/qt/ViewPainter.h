// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Export.h"

class QPainter;

namespace VexmoraSDK::platform {

class View;

/// Paints `view`, its origin at the painter's, and all that is below it. Main thread.
VEXMORA_EXPORT void paintView(QPainter& painter, View& view);

}  // namespace VexmoraSDK::platform
