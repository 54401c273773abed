// SPDX-License-Identifier: MIT
#include "adserver/PictureSize.h"

#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace VexmoraSDK {
namespace {

int byteAt(std::string_view bytes, std::size_t at) {
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

int bigEndian16(std::string_view bytes, std::size_t at) {
    return byteAt(bytes, at) << 8 | byteAt(bytes, at + 1);
}

int littleEndian16(std::string_view bytes, std::size_t at) {
    return byteAt(bytes, at) | byteAt(bytes, at + 1) << 8;
}

PictureSize sizeOfWebP(std::string_view bytes) {
    const std::string_view chunk = bytes.substr(12, 4);
    if (chunk == "VP8X") {
        const auto dimension = [&](std::size_t at) {
            return 1 + (littleEndian16(bytes, at) | byteAt(bytes, at + 2) << 16);
        };
        return {dimension(24), dimension(27)};
    }
    if (chunk == "VP8L") {
        const int low = littleEndian16(bytes, 21);
        const int high = littleEndian16(bytes, 23);
        return {1 + (low & 0x3fff), 1 + (low >> 14 | (high & 0x0fff) << 2)};
    }
    return {littleEndian16(bytes, 26) & 0x3fff, littleEndian16(bytes, 28) & 0x3fff};
}

/// The size is in the frame header, a segment of a type from C0 to CF except three.
PictureSize sizeOfJpeg(std::string_view bytes) {
    for (std::size_t at = 2; byteAt(bytes, at) == 0xff;) {
        const int type = byteAt(bytes, at + 1);
        if (type >= 0xc0 && type <= 0xcf && type != 0xc4 && type != 0xc8 && type != 0xcc)
            return {bigEndian16(bytes, at + 7), bigEndian16(bytes, at + 5)};
        at += 2 + static_cast<std::size_t>(bigEndian16(bytes, at + 2));
    }
    return {};
}

}  // namespace

std::optional<PictureSize> PictureSize::of(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    const std::string_view bytes = text;
    PictureSize size;
    if (bytes.starts_with("\x89PNG\r\n\x1a\n")) {
        size = {bigEndian16(bytes, 18), bigEndian16(bytes, 22)};
    } else if (bytes.starts_with("\xff\xd8")) {
        size = sizeOfJpeg(bytes);
    } else if (bytes.size() > 16 && bytes.starts_with("RIFF") && bytes.substr(8, 4) == "WEBP") {
        size = sizeOfWebP(bytes);
    }
    if (size.width == 0 || size.height == 0) return std::nullopt;
    return size;
}

}  // namespace VexmoraSDK
