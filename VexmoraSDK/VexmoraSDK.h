// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/Version.h"                     // IWYU pragma: export
#include "VexmoraSDK/errors/VexmoraError.h"         // IWYU pragma: export
#include "VexmoraSDK/platform/Application.h"        // IWYU pragma: export
#include "VexmoraSDK/platform/foundation/Bundle.h"  // IWYU pragma: export
#include "VexmoraSDK/types/VexmoraAdType.h"         // IWYU pragma: export
#include "VexmoraSDK/types/VexmoraViewType.h"       // IWYU pragma: export
#include "VexmoraSDK/views/VexmoraDelegate.h"       // IWYU pragma: export
#include "VexmoraSDK/views/VexmoraView.h"           // IWYU pragma: export
#include "VexmoraSDK/views/VexmoraViewFactory.h"    // IWYU pragma: export
