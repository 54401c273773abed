// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace VexmoraSDK::platform {

/// Facts from the markers of a JPEG, read before decoding.
class JpegMarkers {
 public:
    explicit JpegMarkers(std::span<const std::byte> data);

    /// The number of scans. Each one costs a pass over the whole picture.
    std::uint64_t scans() const { return scans_; }
    /// The EXIF orientation, from 1 (upright) to 8.
    int orientation() const { return orientation_; }

 private:
    std::uint64_t scans_ = 0;
    int orientation_ = 1;
};

}  // namespace VexmoraSDK::platform
