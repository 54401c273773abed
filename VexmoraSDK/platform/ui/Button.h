// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/ui/View.h"

namespace VexmoraSDK::platform {

class TextLayout;

/// A title in the middle of a background. A button that looks smaller takes touches within 44 × 44
/// points all the same.
class VEXMORA_EXPORT Button : public View {
 public:
    static constexpr std::string_view kClassName = "Button";

    static std::shared_ptr<Button> create(Rect frame) { return makeSharedOnMain<Button>(frame); }
    explicit Button(Rect frame);
    /// Besides what a view has: "title", "titleSize", "titleColor" and "accessibilityLabel".
    explicit Button(const Coder& coder);
    ~Button() override;

    std::string_view className() const override { return kClassName; }

    /// The text on the button, in UTF-8.
    const std::string& title() const { return title_; }
    void setTitle(std::string title);
    Color titleColor() const { return titleColor_; }
    /// The text for screen readers; if empty, the title.
    const std::string& accessibilityLabel() const {
        return accessibilityLabel_.empty() ? title_ : accessibilityLabel_;
    }

    /// The line of the title. Valid until the button changes.
    const TextLayout& layout();
    /// The start of the line, in the view's own coordinates.
    Point layoutOrigin();

    /// Does what a tap on the button does.
    void press();

 protected:
    bool isTouchedAt(Point point) const override;

 private:
    std::string title_;
    double titleSize_ = 18;
    Color titleColor_ = Color::black();
    std::string accessibilityLabel_;
    std::unique_ptr<const TextLayout> layout_;
};

}  // namespace VexmoraSDK::platform
