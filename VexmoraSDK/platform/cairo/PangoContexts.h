#pragma once

#include <pango/pango.h>

namespace VexmoraSDK::platform::PangoContexts {

/// Has the device's fonts found on a thread of its own, once, so that the first text does not wait
/// for them. Main thread.
void warmUp();

/// What lays out texts that are read in that direction, with the fonts that there are now. Waits
/// for the thread of `warmUp`. Never destroyed. Main thread.
PangoContext* forDirection(PangoDirection direction);

}  // namespace VexmoraSDK::platform::PangoContexts
