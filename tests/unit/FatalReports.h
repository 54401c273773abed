// SPDX-License-Identifier: MIT
#pragma once

namespace VexmoraSDK {

/// The report of a value that must be present and is not, as a pattern. It says where that is.
inline constexpr char kFoundNil[] =
    "^fatal error: unexpectedly found nil while unwrapping an Optional value\n  where: [^\n]+\n$";

}  // namespace VexmoraSDK
