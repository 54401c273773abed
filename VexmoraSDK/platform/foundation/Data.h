// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace VexmoraSDK::platform {

/// A buffer of bytes.
using Data = std::vector<std::byte>;

/// Immutable bytes that several may hold; null without a body.
using SharedData = std::shared_ptr<const Data>;

/// The bytes as text, without a copy. Valid while `data` is.
inline std::string_view textOf(const Data& data) {
    return {reinterpret_cast<const char*>(data.data()), data.size()};
}

/// The bytes of a text.
inline Data dataOf(std::string_view text) {
    const auto* begin = reinterpret_cast<const std::byte*>(text.data());
    return {begin, begin + text.size()};
}

}  // namespace VexmoraSDK::platform
