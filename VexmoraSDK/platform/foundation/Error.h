// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Coder.h"
#include "VexmoraSDK/platform/foundation/Value.h"

namespace VexmoraSDK::platform {

/// The user information key of a text that describes the error.
inline constexpr std::string_view kLocalizedDescriptionKey = "NSLocalizedDescription";
/// The user information key of a more technical text, for developers.
inline constexpr std::string_view kDebugDescriptionKey = "NSDebugDescription";
/// The user information key of the address whose transfer failed.
inline constexpr std::string_view kFailingUrlStringKey = "NSErrorFailingURLStringKey";

/// An error as a value: a domain, a code within it, and user information that may be absent.
class VEXMORA_EXPORT Error {
 public:
    Error(std::string domain, std::intptr_t code, std::optional<Dictionary> userInfo);

    /// Restores an error from an archive; what the archive does not hold is empty, 0 or absent.
    explicit Error(const Coder& coder) noexcept;

    virtual ~Error() = default;
    Error(const Error&) = default;
    Error(Error&&) = default;
    Error& operator=(const Error&) = default;
    Error& operator=(Error&&) = default;

    const std::string& domain() const { return domain_; }
    std::intptr_t code() const { return code_; }
    /// Absent differs from empty.
    const std::optional<Dictionary>& userInfo() const { return userInfo_; }

    /// Writes the error into an archive that restores it.
    void encode(Coder& coder) const noexcept;

 private:
    std::string domain_;
    std::intptr_t code_;
    std::optional<Dictionary> userInfo_;
};

}  // namespace VexmoraSDK::platform
