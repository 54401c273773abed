// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "VexmoraSDK/Export.h"

namespace VexmoraSDK::platform {

/// A font that the device has.
class VEXMORA_EXPORT Font {
 public:
    /// The font of that name, a family alone ("Helvetica") or with a style ("Helvetica-Bold").
    /// `size` in points. Absent when neither the family nor one that stands in for it is installed,
    /// or when it does not have the style. Any thread.
    static std::optional<Font> named(std::string_view name, double size);
    /// The device's own font for text.
    static Font system(double size);

    /// The installed family.
    const std::string& family() const { return family_; }
    /// The family's own name for the style; empty for the plain one.
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
