#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "VexmoraSDK/platform/foundation/Data.h"

namespace VexmoraSDK {

/// What a fatal stop is in the fuzzers: an answer like any other.
struct FatalStop {};

/// Ends the process, which keeps the input, when the library did not do what it promises.
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
