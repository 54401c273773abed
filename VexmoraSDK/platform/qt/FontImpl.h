// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QFont>

#include "VexmoraSDK/platform/Font.h"

namespace VexmoraSDK::platform {

/// The font as a QFont. Main thread.
QFont qtFont(const Font& font);

}  // namespace VexmoraSDK::platform
