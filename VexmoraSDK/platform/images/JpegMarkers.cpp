// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/images/JpegMarkers.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

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

constexpr std::byte kScan{0xDA};

/// A marker and the bytes that its length covers. The data of a scan follow its segment.
struct Segment {
    std::byte marker;
    Bytes body;
};

/// Removes the next segment and all before it from the data. Absent at the end of the picture.
std::optional<Segment> takeSegment(Bytes& data) {
    constexpr std::byte kEnd{0xD9};
    while (!data.empty()) {
        const auto* prefix = std::memchr(data.data(), 0xFF, data.size());
        if (!prefix) break;
        data = data.subspan(
            static_cast<std::size_t>(static_cast<const std::byte*>(prefix) - data.data()));
        const auto marker =
            std::ranges::find_if(data, [](auto byte) { return byte != kMarkerPrefix; });
        if (marker == data.end() || *marker == kEnd) break;
        data = {marker + 1, data.end()};
        if (isStandalone(*marker)) continue;
        if (data.size() < 2) return Segment{*marker, std::exchange(data, {})};
        const auto size =
            std::to_integer<std::size_t>(data[0]) * 256 + std::to_integer<std::size_t>(data[1]);
        const auto segment = data.first(std::min(data.size(), std::max<std::size_t>(size, 2)));
        data = data.subspan(segment.size());
        return Segment{*marker, segment.subspan(2)};
    }
    return std::nullopt;
}

}  // namespace

std::uint64_t JpegMarkers::countScans() const {
    std::uint64_t scans = 0;
    auto rest = data_;
    while (const auto segment = takeSegment(rest)) {
        if (segment->marker == kScan) ++scans;
    }
    return scans;
}

int JpegMarkers::orientation() const {
    constexpr std::byte kApp1{0xE1};
    constexpr std::string_view kExif("Exif\0\0", 6);
    auto rest = data_;
    for (auto segment = takeSegment(rest); segment && segment->marker != kScan;
         segment = takeSegment(rest)) {
        const auto begin = segment->body.first(std::min(segment->body.size(), kExif.size()));
        if (segment->marker == kApp1 &&
            std::ranges::equal(begin, std::as_bytes(std::span(kExif)))) {
            return Tiff(segment->body.subspan(kExif.size())).orientation();
        }
    }
    return 1;
}

}  // namespace VexmoraSDK::platform
