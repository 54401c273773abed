// SPDX-License-Identifier: MIT
#pragma once

#include <variant>

#include "VexmoraSDK/platform/foundation/Error.h"
#include "VexmoraSDK/platform/foundation/Value.h"

namespace VexmoraSDK::platform::Json {

/// Reads a JSON text (RFC 8259, a leading UTF-8 byte order mark accepted, nesting to 512, at most 1
/// MiB) whose top level is an array or an object; the last of duplicate members counts. Any other
/// text gives an error whose user information describes it and names the byte offset. Never throws.
std::variant<Value, Error> read(const Data& data);

}  // namespace VexmoraSDK::platform::Json
