// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "VexmoraSDK/Export.h"

namespace VexmoraSDK::platform {

/// A font installed on the device.
class VEXMORA_EXPORT Font {
 public:
    /// Finds a font by family ("Helvetica") or by family and style ("Helvetica-Bold"); `size` is in
    /// points. Absent if neither the family nor a substitute for it is installed, or if it lacks
    /// the style. Any thread.
    static std::optional<Font> named(std::string_view name, double size);
    /// The device's default text font.
    static Font system(double size);

    /// The installed family.
    const std::string& family() const { return family_; }
    /// The family's own name for the style; empty for the regular one.
    const std::string& style() const { return style_; }
    double size() const { return size_; }

    friend bool operator==(const Font&, const Font&) = default;

 private:
    Font(std::string family, std::string style, double size)
        : family_(std::move(family)), style_(std::move(style)), size_(size) {}

    std::string family_;
    std::string style_;
    double size_;
};

}  // namespace VexmoraSDK::platform
