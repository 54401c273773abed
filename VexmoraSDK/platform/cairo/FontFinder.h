// SPDX-License-Identifier: MIT
#pragma once

namespace VexmoraSDK::platform {

/// Has the device's fonts found on a thread of its own, once, so that the first text does not wait
/// for them. Main thread.
void findFontsInBackground();

}  // namespace VexmoraSDK::platform
