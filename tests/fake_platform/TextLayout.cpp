// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/TextLayout.h"

#include <algorithm>
#include <cmath>

#include "tests/fake_platform/FakeTextLayout.h"

namespace VexmoraSDK::platform {
namespace {

FakeTextLayout::Rule& currentRule() {
    static auto& rule = *new FakeTextLayout::Rule(FakeTextLayout::measureByBytes);
    return rule;
}

int preparations = 0;

}  // namespace

struct TextLayout::Impl {
    Size size;
    double width;
};

bool TextLayout::prepare() {
    ++preparations;
    return true;
}

int FakeTextLayout::preparationCount() {
    return preparations;
}

TextLayout::TextLayout(const std::string& text, const Font& font, double width)
    : impl_(std::make_unique<const Impl>(Impl{currentRule()(text, font, width), width})) {}

TextLayout::~TextLayout() = default;

Size TextLayout::size() const {
    return impl_->size;
}

bool TextLayout::holdsIn(double width) const {
    return width == impl_->width;
}

void FakeTextLayout::measureBy(Rule rule) {
    currentRule() = std::move(rule);
}

Size FakeTextLayout::measureByBytes(const std::string& text, const Font& font, double width) {
    const double byteWidth = font.size() / 2;
    const double bytesPerLine = std::max(1.0, std::floor(width / byteWidth));
    const auto bytes = static_cast<double>(text.size());
    const double lines = std::max(1.0, std::ceil(bytes / bytesPerLine));
    return {std::min(bytes, bytesPerLine) * byteWidth, lines * font.size()};
}

}  // namespace VexmoraSDK::platform
