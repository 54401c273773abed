// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace VexmoraSDK {

/// A WebP of one colour, 32 bytes whatever its size: each prefix code has a single symbol, which
/// takes no bits.
inline std::string plainPicture(unsigned width, unsigned height) {
    std::string picture("RIFF\x18\0\0\0WEBPVP8L\x0c\0\0\0", 20);
    std::uint64_t bits = 0;
    unsigned count = 0;
    const auto put = [&](std::uint64_t value, unsigned size) {
        bits |= value << count;
        for (count += size; count >= 8; count -= 8, bits >>= 8)
            picture += static_cast<char>(bits);
    };
    put(0x2F, 8);
    put(width - 1, 14);
    put(height - 1, 14);
    put(0, 1 + 3);      // no alpha, version 0
    put(0, 1 + 1 + 1);  // no transform, no cache of colours, one group of codes
    for (int code = 0; code < 5; ++code)
        put(0b0001, 4);  // simple, of one symbol of one bit: 0
    while (picture.size() < 32)
        put(0, 8);
    return picture;
}

}  // namespace VexmoraSDK
