// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/ui/Button.h"

#include <algorithm>
#include <cmath>

#include "VexmoraSDK/platform/Font.h"
#include "VexmoraSDK/platform/TextLayout.h"
#include "VexmoraSDK/platform/foundation/Coder.h"

namespace VexmoraSDK::platform {
namespace {

constexpr double kFingerSize = 44;

}  // namespace

Button::Button(Rect frame) : View(frame) {}

Button::Button(const Coder& coder) : View(coder) {
    if (const auto* title = coder.decode<std::string>("title")) title_ = *title;
    titleSize_ = coder.number("titleSize").value_or(titleSize_);
    titleColor_ = coder.color("titleColor").value_or(titleColor_);
    if (const auto* label = coder.decode<std::string>("accessibilityLabel")) {
        accessibilityLabel_ = *label;
    }
}

Button::~Button() = default;

void Button::setTitle(std::string title) {
    title_ = std::move(title);
    layout_.reset();
    setNeedsDisplay();
}

const TextLayout& Button::layout() {
    if (!layout_) {
        constexpr double kOneLine = 10000;
        layout_ = std::make_unique<const TextLayout>(title_, Font::system(titleSize_), kOneLine);
    }
    return *layout_;
}

Point Button::layoutOrigin() {
    const Size view = frame().size;
    const Size line = layout().size();
    return {(view.width - line.width) / 2, (view.height - line.height) / 2};
}

void Button::press() {
    const Size size = frame().size;
    tap({size.width / 2, size.height / 2});
}

bool Button::isTouchedAt(Point point) const {
    const auto [width, height] = frame().size;
    return std::abs(point.x - width / 2) <= std::max(width, kFingerSize) / 2 &&
           std::abs(point.y - height / 2) <= std::max(height, kFingerSize) / 2;
}

}  // namespace VexmoraSDK::platform
