// SPDX-License-Identifier: MIT
#pragma once

namespace VexmoraSDK {

/// The report of a value that must be present and is not, as a pattern. It says where that is, and
/// ends the output but for the line that an emulator adds.
inline constexpr char kFoundNil[] =
    "^fatal error: unexpectedly found nil while unwrapping an Optional value\n  where: [^\n]+\n"
    "(qemu: [^\n]+\n)?$";

}  // namespace VexmoraSDK
