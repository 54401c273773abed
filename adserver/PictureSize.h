// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>

namespace VexmoraSDK {

/// The size of a picture in pixels, from its file's header.
struct PictureSize {
    int width = 0;
    int height = 0;

    /// The size of a PNG, JPEG or WebP picture; nothing for any other file.
    static std::optional<PictureSize> of(const std::filesystem::path& file);

    friend bool operator==(const PictureSize&, const PictureSize&) = default;
};

}  // namespace VexmoraSDK
