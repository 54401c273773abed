#include "VexmoraSDK/platform/TextLayout.h"

#include <QtGui/QFontDatabase>
#include <algorithm>
#include <cmath>
#include <iterator>

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

QFont qtFont(const Font& font) {
    const auto family = QString::fromStdString(font.family());
    const auto style = QString::fromStdString(font.style());
    auto found = style.isEmpty() ? QFont(family) : QFontDatabase::font(family, style, 12);
    // Points are device independent pixels here. The text engine has whole ones only.
    found.setPixelSize(std::max(1, qRound(font.size())));
    // Hinted widths differ with the scale of the screen, and with them the line breaks.
    found.setHintingPreference(QFont::PreferNoHinting);
    return found;
}

}  // namespace

TextLayout::Impl::Impl(const std::string& text, const Font& font, double width)
    : layout(textWithLineSeparators(text), qtFont(font)) {
    const QuietScope quiet;  // no word of scripts that the font does not have
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setAlignment(layout.text().isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
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
    while (fitted < lineWidth && breakLines(fitted) != lines)
        ++fitted;
    breakLines(lineWidth);
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

TextLayout::TextLayout(const std::string& text, const Font& font, double width)
    : impl_(std::make_unique<const Impl>(text, font, width)) {}

TextLayout::~TextLayout() = default;

Size TextLayout::size() const {
    return impl_->size;
}

}  // namespace VexmoraSDK::platform
