// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/Error.h"

#include <algorithm>
#include <limits>

namespace VexmoraSDK::platform {
namespace {

constexpr const char* kDomainKey = "NSDomain";
constexpr const char* kCodeKey = "NSCode";
constexpr const char* kUserInfoKey = "NSUserInfo";

}  // namespace

Error::Error(std::string domain, std::intptr_t code, std::optional<Dictionary> userInfo)
    : domain_(std::move(domain)), code_(code), userInfo_(std::move(userInfo)) {}

Error::Error(const Coder& coder) noexcept : code_(0) {
    if (const auto* domain = coder.decode<std::string>(kDomainKey)) domain_ = *domain;
    if (const auto* code = coder.decode<std::int64_t>(kCodeKey)) {
        // An archive of a machine with longer words may hold more than a code of this one.
        using Limits = std::numeric_limits<std::intptr_t>;
        code_ = static_cast<std::intptr_t>(
            std::clamp<std::int64_t>(*code, Limits::min(), Limits::max()));
    }
    if (const auto* userInfo = coder.decode<Dictionary>(kUserInfoKey)) userInfo_ = *userInfo;
}

void Error::encode(Coder& coder) const noexcept {
    coder.encode(kDomainKey, domain_);
    coder.encode(kCodeKey, std::int64_t{code_});
    if (userInfo_) coder.encode(kUserInfoKey, *userInfo_);
}

}  // namespace VexmoraSDK::platform
