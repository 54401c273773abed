// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace VexmoraSDK::benchmarks {

/// Has libcurl and Qt trust the certificate in the file, in this process. Before the first request.
void trustCertificate(const std::string& file);

}  // namespace VexmoraSDK::benchmarks
