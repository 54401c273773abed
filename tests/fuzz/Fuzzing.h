// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "VexmoraSDK/platform/foundation/Data.h"

namespace VexmoraSDK {

/// Thrown by a fatal stop, which does not count as a finding.
struct FatalStop {};

/// Reports a finding unless `promise` holds; the fuzzer then keeps the input.
inline void check(bool promise, const char* broken) {
    if (promise) return;
    std::fprintf(stderr, "%s\n", broken);
    std::abort();
}

inline platform::Data dataOf(const std::uint8_t* bytes, std::size_t size) {
    const auto* begin = reinterpret_cast<const std::byte*>(bytes);
    return {begin, begin + size};
}

}  // namespace VexmoraSDK
