// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>

#include "VexmoraSDK/platform/images/Image.h"

namespace VexmoraSDK::platform {

// One decoder per format, each over the format's own library. A decoder returns the whole picture
// or null: it allocates after it has accepted the size in the header, and refuses truncated data
// and pixels for which there is no memory. Any thread.

using EncodedImage = std::span<const std::byte>;

std::shared_ptr<const Image> decodePng(EncodedImage data);
std::shared_ptr<const Image> decodeJpeg(EncodedImage data);
std::shared_ptr<const Image> decodeWebP(EncodedImage data);
/// Decodes the first frame, placed on the screen that the header describes.
std::shared_ptr<const Image> decodeGif(EncodedImage data);

/// The largest number of pixels of a picture and of one side. JPEG and GIF cannot express a longer
/// side.
constexpr std::uint64_t kMaxPixels = 16'000'000;
constexpr std::uint64_t kMaxSide = 65'535;

constexpr bool isAcceptedSize(std::uint64_t width, std::uint64_t height) {
    return width > 0 && height > 0 && width <= kMaxSide && height <= kMaxSide &&
           width * height <= kMaxPixels;
}

/// Allocates that many pixels of any colour; null without memory.
inline Image::Pixels makePixels(std::size_t count) {
    return Image::Pixels(new (std::nothrow) std::uint32_t[count]);
}

}  // namespace VexmoraSDK::platform
