// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/images/JpegMarkers.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>

namespace VexmoraSDK::platform {
namespace {

using Bytes = std::span<const std::byte>;

constexpr std::byte kMarkerPrefix{0xFF};

/// The orientation in the tags of a TIFF header, 1 if there is none.
class Tiff {
 public:
    explicit Tiff(Bytes data) : data_(data) {}

    int orientation() const {
        constexpr unsigned kOrientationTag = 0x0112;
        constexpr unsigned kShortType = 3;
        constexpr std::size_t kEntrySize = 12;
        const std::size_t directory = number(4, 4);
        const std::size_t entries = number(directory, 2);
        for (std::size_t i = 0; i < entries; ++i) {
            const std::size_t entry = directory + 2 + i * kEntrySize;
            if (number(entry, 2) != kOrientationTag) continue;
            const auto value = static_cast<int>(number(entry + 8, 2));
            const bool isOne = number(entry + 2, 2) == kShortType && number(entry + 4, 4) == 1;
            return isOne && value >= 1 && value <= 8 ? value : 1;
        }
        return 1;
    }

 private:
    /// Reads a number; 0 beyond the data.
    std::size_t number(std::size_t at, std::size_t size) const {
        if (at > data_.size() || data_.size() - at < size) return 0;
        const bool isLittleEndian = data_[0] == std::byte{'I'};
        std::size_t value = 0;
        for (std::size_t i = 0; i < size; ++i) {
            const auto byte = data_[at + (isLittleEndian ? size - 1 - i : i)];
            value = value << 8 | std::to_integer<std::size_t>(byte);
        }
        return value;
    }

    Bytes data_;
};

bool isStandalone(std::byte marker) {
    // 00 is data, 01 a private marker, D0 to D7 are restarts and D8 is the start.
    return marker <= std::byte{0x01} || (marker >= std::byte{0xD0} && marker <= std::byte{0xD8});
}

}  // namespace

JpegMarkers::JpegMarkers(Bytes data) {
    constexpr std::byte kScan{0xDA};
    constexpr std::byte kEnd{0xD9};
    constexpr std::byte kApp1{0xE1};
    constexpr std::string_view kExif("Exif\0\0", 6);
    bool hasExif = false;
    // A scan's data lie between its marker and the next.
    while (const auto* prefix = std::memchr(data.data(), 0xFF, data.size())) {
        data = data.subspan(
            static_cast<std::size_t>(static_cast<const std::byte*>(prefix) - data.data()));
        const auto marker =
            std::ranges::find_if(data, [](auto byte) { return byte != kMarkerPrefix; });
        if (marker == data.end() || *marker == kEnd) return;
        data = {marker + 1, data.end()};
        if (isStandalone(*marker)) continue;
        if (*marker == kScan) ++scans_;
        if (data.size() < 2) return;
        const auto size =
            std::to_integer<std::size_t>(data[0]) * 256 + std::to_integer<std::size_t>(data[1]);
        const auto segment = data.first(std::min(data.size(), std::max<std::size_t>(size, 2)));
        data = data.subspan(segment.size());
        if (*marker != kApp1 || hasExif) continue;
        const auto body = segment.subspan(2);
        hasExif = std::ranges::equal(body.first(std::min(body.size(), kExif.size())),
                                     std::as_bytes(std::span(kExif)));
        if (hasExif) orientation_ = Tiff(body.subspan(kExif.size())).orientation();
    }
}

}  // namespace VexmoraSDK::platform
