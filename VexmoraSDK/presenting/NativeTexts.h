// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Color.h"
#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

/// The text colours of native ads. An absent colour is the library's own: black, and grey for the
/// display name.
struct NativeTextColors {
    /// The colour of the title and the description.
    std::optional<platform::Color> text;
    /// The colour of the display name.
    std::optional<platform::Color> secondary;
};

/// Sets the text colours of a drawn native ad. Does nothing to other views. Main thread.
VEXMORA_EXPORT void setTextColors(const VexmoraView& view, const NativeTextColors& colors);

/// The text that screen readers read for the ad drawn in `view`: `advertisement`, the word for an
/// ad, then the ad's texts. UTF-8. Main thread.
VEXMORA_EXPORT std::string accessibleName(std::string_view advertisement, const VexmoraView& view);

}  // namespace VexmoraSDK
