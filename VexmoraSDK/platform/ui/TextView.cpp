// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/ui/TextView.h"

#include <algorithm>

#include "VexmoraSDK/platform/TextLayout.h"
#include "VexmoraSDK/platform/foundation/Coder.h"

namespace VexmoraSDK::platform {
namespace {

constexpr double kLinePadding = 5;
constexpr double kDefaultFontSize = 12;

}  // namespace

TextView::TextView(Rect frame) : View(frame) {}

TextView::TextView(const Coder& coder)
    : View(coder), textColor_(coder.color("textColor").value_or(Color::black())) {
    if (const auto* text = coder.decode<std::string>("text")) text_ = *text;
    const double size = coder.number("fontSize").value_or(kDefaultFontSize);
    const auto* name = coder.decode<std::string>("fontName");
    font_ = name ? Font::named(*name, size) : Font::system(size);
}

TextView::~TextView() = default;

void TextView::setText(std::optional<std::string> text) {
    text_ = std::move(text);
    layout_.reset();
    setNeedsDisplay();
}

void TextView::setFont(std::optional<Font> font) {
    font_ = std::move(font);
    layout_.reset();
    setNeedsDisplay();
}

void TextView::setTextColor(Color color) {
    textColor_ = color;
    setNeedsDisplay();
}

void TextView::setTextContainerInset(EdgeInsets inset) {
    textContainerInset_ = inset;
    setNeedsDisplay();
}

Size TextView::sizeThatFits(Size proposed) {
    const auto& [top, left, bottom, right] = textContainerInset_;
    const Size text = layoutWithin(proposed.width).size();
    return {text.width + left + right + 2 * kLinePadding, text.height + top + bottom};
}

Size TextView::contentSize() {
    return sizeThatFits(frame().size);
}

const TextLayout& TextView::layout() {
    return layoutWithin(frame().size.width);
}

bool TextView::takeLayoutOf(TextView& other) {
    if (text_ != other.text_ || font_ != other.font_) return false;
    layout_ = std::move(other.layout_);
    return true;
}

Point TextView::layoutOrigin() const {
    return {textContainerInset_.left + kLinePadding, textContainerInset_.top};
}

const TextLayout& TextView::layoutWithin(double viewWidth) {
    const double width = std::max(
        0.0, viewWidth - textContainerInset_.left - textContainerInset_.right - 2 * kLinePadding);
    if (!layout_ || !layout_->holdsIn(width)) {
        layout_ = std::make_unique<const TextLayout>(
            text_.value_or(std::string()), font_ ? *font_ : Font::system(kDefaultFontSize), width);
    }
    return *layout_;
}

}  // namespace VexmoraSDK::platform
