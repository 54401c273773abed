// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace VexmoraSDK::benchmarks {

/// Makes libcurl and Qt trust the certificate in `file`, in this process. Call it before the first
/// request.
void trustCertificate(const std::string& file);

}  // namespace VexmoraSDK::benchmarks
