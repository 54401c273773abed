// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/errors/VexmoraErrorCodes.h"
#include "VexmoraSDK/platform/foundation/Error.h"

namespace VexmoraSDK {

/// An error reported to the host. The domain is `kDomain`, the code one of `VexmoraErrorCodes`.
class VEXMORA_EXPORT VexmoraError : public platform::Error {
 public:
    static constexpr std::string_view kDomain = "Vexmora";

    VexmoraError(VexmoraErrorCodes code, std::optional<platform::Dictionary> userInfo);

    /// Restores an archived error of any domain and code.
    explicit VexmoraError(const platform::Coder& coder) noexcept : Error(coder) {}

    /// Not supported: a fatal stop. An error is made from a code, never with another domain.
    [[noreturn]] VexmoraError(std::string domain, std::intptr_t code,
                              std::optional<platform::Dictionary> userInfo);
};

/// The callback by which an operation reports that it has failed.
using ErrorCallback = std::function<void(const VexmoraError& error)>;

}  // namespace VexmoraSDK
