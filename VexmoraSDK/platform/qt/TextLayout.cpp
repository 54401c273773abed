// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/TextLayout.h"

#include <QtCore/QCoreApplication>
#include <algorithm>
#include <cmath>
#include <iterator>

#include "VexmoraSDK/platform/qt/FontImpl.h"
#include "VexmoraSDK/platform/qt/QuietScope.h"
#include "VexmoraSDK/platform/qt/TextLayoutImpl.h"

namespace VexmoraSDK::platform {
namespace {

// Wider than any line, and within the text engine's range.
constexpr double kMaxLineWidth = 1'000'000;

// In UTF-16 units, more than any ad needs. Laying them out takes the main thread some hundredths of
// a second at worst.
constexpr qsizetype kMaxTextLength = 2048;

// The part of a text that is laid out.
QString beginningOf(const std::string& text) {
    // A UTF-16 unit takes at most three bytes of UTF-8, and the last character may be cut.
    const auto bytes = std::min<qsizetype>(std::ssize(text), 3 * kMaxTextLength + 3);
    auto beginning = QString::fromUtf8(text.data(), bytes).left(kMaxTextLength);
    if (beginning.size() == kMaxTextLength && beginning.back().isHighSurrogate()) beginning.chop(1);
    return beginning;
}

QString textWithLineSeparators(const std::string& text) {
    return beginningOf(text)
        .replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('\r'), QChar::LineSeparator)
        .replace(QLatin1Char('\n'), QChar::LineSeparator)
        .replace(QChar::ParagraphSeparator, QChar::LineSeparator);
}

}  // namespace

TextLayout::Impl::Impl(const std::string& text, const Font& font, double width)
    : text_(textWithLineSeparators(text)),
      font_(font),
      askedWidth_(width),
      rightToLeft_(text_.isRightToLeft()) {
    layOut();
}

void TextLayout::Impl::layOut() const {
    const QuietScope quiet;  // Qt warns of scripts that the font lacks.
    auto& layout = layout_.emplace(text_, qtFont(font_));
    QObject::connect(QCoreApplication::instance(), &QObject::destroyed, &context_,
                     [this] { layout_.reset(); });
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setAlignment(rightToLeft_ ? Qt::AlignRight : Qt::AlignLeft);
    layout.setTextOption(option);
    layout.setCacheEnabled(true);

    // Whole points, so that the reported width yields the same lines.
    const double lineWidth = std::floor(std::clamp(askedWidth_, 0.0, kMaxLineWidth));
    const auto lines = breakLines(lineWidth);

    // Letters that overhang their advance, and scripts that reshape letters at line ends, may need
    // more width than the lines measure.
    double fitted = std::min(size_.width, lineWidth);
    double laidOut = lineWidth;
    const auto isSameIn = [&](double narrower) {
        laidOut = narrower;
        return lines.size() == 2 ? isOneLineIn(narrower) : breakLines(narrower) == lines;
    };
    while (fitted < lineWidth && !isSameIn(fitted))
        ++fitted;
    // Left-aligned lines have the same positions in both widths.
    if (laidOut != fitted || rightToLeft_) breakLines(lineWidth);
    size_.width = fitted;
}

std::vector<int> TextLayout::Impl::breakLines(double width) const {
    std::vector<int> breaks = {0};
    size_ = {};
    layout_->beginLayout();
    for (int i = 0; i < kMaxLines; ++i) {
        auto line = layout_->createLine();
        if (!line.isValid()) break;
        line.setLineWidth(width);
        line.setPosition(QPointF(0, size_.height));
        size_.width = std::max(size_.width, std::ceil(line.naturalTextWidth()));
        size_.height += line.height();
        breaks.push_back(line.textStart() + line.textLength());
    }
    layout_->endLayout();
    return breaks;
}

/// Whether a text of one line is one line in `width` too. Its letters are not shaped again.
bool TextLayout::Impl::isOneLineIn(double width) const {
    auto line = layout_->lineAt(0);
    line.setLineWidth(width);
    return line.textLength() == text_.size();
}

bool TextLayout::Impl::holdsIn(double width) const {
    return width == askedWidth_ || (!rightToLeft_ && size_.width <= width && width < askedWidth_);
}

const QTextLayout& TextLayout::Impl::lines() const {
    if (!layout_) layOut();
    return *layout_;
}

// Qt has loaded its fonts when the application object is made.
bool TextLayout::prepare() {
    return true;
}

TextLayout::TextLayout(const std::string& text, const Font& font, double width)
    : impl_(std::make_unique<const Impl>(text, font, width)) {}

TextLayout::~TextLayout() = default;

Size TextLayout::size() const {
    return impl_->size();
}

bool TextLayout::holdsIn(double width) const {
    return impl_->holdsIn(width);
}

}  // namespace VexmoraSDK::platform
