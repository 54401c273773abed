// SPDX-License-Identifier: MIT
#pragma once

namespace VexmoraSDK::platform {

/// Starts the search for the device's fonts on a thread of its own, once, so that the first text
/// need not wait for it. Returns whether it has ended. Main thread.
bool findFontsInBackground();

/// Makes the text engine register its exit handlers. Any thread.
void prepareFontsForEnd();

}  // namespace VexmoraSDK::platform
