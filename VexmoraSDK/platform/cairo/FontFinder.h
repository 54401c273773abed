// SPDX-License-Identifier: MIT
#pragma once

namespace VexmoraSDK::platform {

/// Starts the search for the device's fonts on a thread of its own, once, so that the first text
/// need not wait for it. Main thread.
void findFontsInBackground();

}  // namespace VexmoraSDK::platform
