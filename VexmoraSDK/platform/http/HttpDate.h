// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace VexmoraSDK::platform {

/// Reads a date of a header field, in one of the three forms of RFC 9110. Absent when the text is
/// none. libcurl's reader ends with the year 2038 where `time_t` has 32 bits. Any thread.
std::optional<std::chrono::sys_seconds> readHttpDate(const std::string& text);

}  // namespace VexmoraSDK::platform
