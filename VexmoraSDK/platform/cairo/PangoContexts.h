// SPDX-License-Identifier: MIT
#pragma once

#include <pango/pango.h>

namespace VexmoraSDK::platform::PangoContexts {

/// The context for texts of this direction, with the current fonts. Waits for the thread of
/// `findFontsInBackground`. Never destroyed. Main thread.
PangoContext* forDirection(PangoDirection direction);

}  // namespace VexmoraSDK::platform::PangoContexts
