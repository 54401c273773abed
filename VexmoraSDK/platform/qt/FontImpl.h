// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QFont>

#include "VexmoraSDK/platform/Font.h"

namespace VexmoraSDK::platform {

/// The font as Qt lays texts out in it. Main thread.
QFont qtFont(const Font& font);

}  // namespace VexmoraSDK::platform
