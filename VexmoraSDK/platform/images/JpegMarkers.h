// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace VexmoraSDK::platform {

/// Facts from the markers of a JPEG that libjpeg does not tell. The data have to outlive it.
class JpegMarkers {
 public:
    explicit JpegMarkers(std::span<const std::byte> data) : data_(data) {}

    /// The number of scans. This searches all of the data.
    std::uint64_t countScans() const;
    /// The EXIF orientation, from 1 (upright) to 8, in the headers before the first scan.
    int orientation() const;

 private:
    std::span<const std::byte> data_;
};

}  // namespace VexmoraSDK::platform
