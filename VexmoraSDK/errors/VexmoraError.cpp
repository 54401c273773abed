// SPDX-License-Identifier: MIT
#include "VexmoraSDK/errors/VexmoraError.h"

#include "VexmoraSDK/platform/foundation/Fatal.h"

namespace VexmoraSDK {

VexmoraError::VexmoraError(VexmoraErrorCodes code, std::optional<platform::Dictionary> userInfo)
    : Error(std::string(kDomain), rawValue(code), std::move(userInfo)) {}

VexmoraError::VexmoraError(std::string domain, std::intptr_t code,
                           std::optional<platform::Dictionary> userInfo)
    : Error(std::move(domain), code, std::move(userInfo)) {
    const platform::FatalContext context("domain", this->domain());
    platform::unimplementedInitializer("init(domain:code:userInfo:)", "VexmoraSDK.VexmoraError",
                                       "errors/VexmoraError: 6: 20: ");
}

}  // namespace VexmoraSDK
