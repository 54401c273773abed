// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "VexmoraSDK/Export.h"

namespace VexmoraSDK::platform {

/// An address: an absolute URL or a relative reference whose characters are those of RFC 3986. Its
/// text is kept byte for byte, because click addresses carry signatures.
class VEXMORA_EXPORT Url {
 public:
    /// Absent for an empty text and for a text that is not a valid URL or reference.
    static std::optional<Url> fromString(std::string_view text);

    const std::string& text() const { return text_; }
    /// The scheme in lower case; empty for a relative reference.
    std::string scheme() const;
    /// The host as it is written; empty when there is none.
    std::string_view host() const;

    friend bool operator==(const Url&, const Url&) = default;

 private:
    explicit Url(std::string text) : text_(std::move(text)) {}

    std::string text_;
    // The parts are kept as positions, because parsing the text again takes long.
    std::size_t schemeLength_ = 0;
    std::size_t hostPosition_ = 0;
    std::size_t hostLength_ = 0;
};

}  // namespace VexmoraSDK::platform
