// SPDX-License-Identifier: MIT
#pragma once

#include <pango/pango.h>

namespace VexmoraSDK::platform::PangoContexts {

/// What lays out texts that are read in that direction, with the fonts that there are now. Waits
/// for the thread of `findFontsInBackground`. Never destroyed. Main thread.
PangoContext* forDirection(PangoDirection direction);

}  // namespace VexmoraSDK::platform::PangoContexts
