// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace VexmoraSDK {

/// The end of a fatal report, as a pattern: an emulator adds a line of its own.
inline const std::string kEndOfReport = "\n(qemu: [^\n]+\n)?$";

/// The report of a value that must be present and is not, as a pattern. It says where that is.
inline const std::string kFoundNil =
    "^fatal error: unexpectedly found nil while unwrapping an Optional value\n  where: [^\n]+" +
    kEndOfReport;

}  // namespace VexmoraSDK
