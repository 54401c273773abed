// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace VexmoraSDK::platform {

/// What the markers of a JPEG tell before any of it is decoded.
class JpegMarkers {
 public:
    explicit JpegMarkers(std::span<const std::byte> data);

    /// How many scans there are; each goes over the whole picture.
    std::uint64_t scans() const { return scans_; }
    /// How EXIF says that the picture is to be turned, from 1, not at all, to 8.
    int orientation() const { return orientation_; }

 private:
    std::uint64_t scans_ = 0;
    int orientation_ = 1;
};

}  // namespace VexmoraSDK::platform
