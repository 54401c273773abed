// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/cairo/FontFinder.h"

void VexmoraSDK::platform::prepareFontsForEnd() {}
