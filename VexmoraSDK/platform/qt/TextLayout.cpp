#include "VexmoraSDK/platform/TextLayout.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "VexmoraSDK/platform/qt/FontImpl.h"
#include "VexmoraSDK/platform/qt/QuietScope.h"
#include "VexmoraSDK/platform/qt/TextLayoutImpl.h"

namespace VexmoraSDK::platform {
namespace {

// More than any line takes, and within what the text engine can count.
constexpr double kWidestLine = 1'000'000;

// In UTF-16 units: more than any ad says, and some hundredths of a second at worst for the main
// thread.
constexpr qsizetype kLongestText = 2048;

// A longer text is laid out up to there.
QString beginningOf(const std::string& text) {
    // No unit takes more than three bytes; the last letter among these may be cut.
    const auto bytes = std::min<qsizetype>(std::ssize(text), 3 * kLongestText + 3);
    auto beginning = QString::fromUtf8(text.data(), bytes).left(kLongestText);
    if (beginning.size() == kLongestText && beginning.back().isHighSurrogate()) beginning.chop(1);
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
    : layout(textWithLineSeparators(text), qtFont(font)),
      askedWidth(width),
      rightToLeft(layout.text().isRightToLeft()) {
    const QuietScope quiet;  // no word of scripts that the font does not have
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setAlignment(rightToLeft ? Qt::AlignRight : Qt::AlignLeft);
    layout.setTextOption(option);
    layout.setCacheEnabled(true);

    // In whole points, and no narrower than the widest letter, lest the fitted width be wider.
    double lineWidth = std::floor(std::clamp(width, 0.0, kWidestLine));
    auto lines = breakLines(lineWidth);
    while (size.width > lineWidth) {
        lineWidth = size.width;
        lines = breakLines(lineWidth);
    }

    // Letters that reach beyond their own width, and scripts that are joined anew at each end of a
    // line, may need more than the lines measure.
    double fitted = size.width;
    double laidOut = lineWidth;
    const auto isSameIn = [&](double narrower) {
        laidOut = narrower;
        return lines.size() == 1 ? isOneLineIn(narrower) : breakLines(narrower) == lines;
    };
    while (fitted < lineWidth && !isSameIn(fitted))
        ++fitted;
    // Lines that begin at the left lie in the fitted width as in all of it.
    if (laidOut != fitted || rightToLeft) breakLines(lineWidth);
    size.width = fitted;
}

std::vector<int> TextLayout::Impl::breakLines(double width) {
    std::vector<int> lines;
    size = {};
    layout.beginLayout();
    for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition(QPointF(0, size.height));
        size.width = std::max(size.width, std::ceil(line.naturalTextWidth()));
        size.height += line.height();
        lines.push_back(line.textStart());
    }
    layout.endLayout();
    return lines;
}

/// Of a text that was one line before: its letters are not shaped again.
bool TextLayout::Impl::isOneLineIn(double width) {
    auto line = layout.lineAt(0);
    line.setLineWidth(width);
    return line.textLength() == layout.text().size();
}

TextLayout::TextLayout(const std::string& text, const Font& font, double width)
    : impl_(std::make_unique<const Impl>(text, font, width)) {}

TextLayout::~TextLayout() = default;

Size TextLayout::size() const {
    return impl_->size;
}

bool TextLayout::holdsIn(double width) const {
    const double asked = impl_->askedWidth;
    return width == asked || (!impl_->rightToLeft && impl_->size.width <= width && width < asked);
}

}  // namespace VexmoraSDK::platform
