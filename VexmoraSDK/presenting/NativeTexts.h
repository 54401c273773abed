// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Color.h"
#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

/// The colours of the texts of native ads; an absent one is that of the library: black and grey.
struct NativeTextColors {
    /// Of the title and the description.
    std::optional<platform::Color> text;
    /// Of the display name.
    std::optional<platform::Color> secondary;
};

/// Gives the texts of a native ad, once it is drawn, their colours. Does nothing to other views.
/// Main thread.
VEXMORA_EXPORT void setTextColors(const VexmoraView& view, const NativeTextColors& colors);

/// What screen readers say of the ad that is drawn in `view`: the word for an advertisement, then
/// the texts of the ad. UTF-8. Main thread.
VEXMORA_EXPORT std::string accessibleName(std::string_view advertisement, const VexmoraView& view);

}  // namespace VexmoraSDK
