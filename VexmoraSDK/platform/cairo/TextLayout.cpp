// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/TextLayout.h"

#include <fribidi.h>
#include <hb-ot.h>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "VexmoraSDK/platform/cairo/FontFinder.h"
#include "VexmoraSDK/platform/cairo/FontImpl.h"
#include "VexmoraSDK/platform/cairo/PangoContexts.h"
#include "VexmoraSDK/platform/cairo/TextLayoutImpl.h"

namespace VexmoraSDK::platform {
namespace {

// Wider than any line, and within Pango's range.
constexpr double kMaxLineWidth = 1'000'000;

// Counted in UTF-16 units, so that every backend lays out the same part of a text. It is more than
// any ad needs, and takes the main thread some hundredths of a second at worst.
constexpr int kMaxTextLength = 2048;

std::string_view letterAt(const char* at) {
    return {at, static_cast<std::size_t>(g_utf8_next_char(at) - at)};
}

// The part of a text that is laid out, repaired: Pango refuses invalid UTF-8 and stops at a NUL.
std::string readable(const std::string& text) {
    // A UTF-16 unit takes at most three bytes of UTF-8, and the last character may be cut.
    const auto bytes = std::min<std::size_t>(text.size(), 3 * kMaxTextLength + 3);
    const CPointer<char, g_free> valid(g_utf8_make_valid(text.data(), static_cast<gssize>(bytes)));
    std::string result;
    int length = 0;
    for (const char* at = valid.get(); *at; at = g_utf8_next_char(at)) {
        length += g_utf8_get_char(at) > 0xFFFF ? 2 : 1;
        if (length > kMaxTextLength) break;
        result += letterAt(at);
    }
    return result;
}

// The end of the UTF-8 character that contains the byte at `position`.
std::size_t endOfLetter(const std::string& text, std::size_t position) {
    while (position < text.size() && (text[position] & 0xC0) == 0x80)
        ++position;
    return std::min(position, text.size());
}

// Converts all line separators to \n.
std::string withLines(const std::string& text) {
    std::string result;
    for (const char* at = text.c_str(); *at; at = g_utf8_next_char(at)) {
        const gunichar letter = g_utf8_get_char(at);
        if (letter == '\r' && at[1] == '\n') continue;
        const bool endsLine = letter == '\r' || letter == 0x2028 || letter == 0x2029;
        result += endsLine ? "\n" : letterAt(at);
    }
    return result;
}

// The direction of the first strong character.
bool isRightToLeft(const std::string& text) {
    glong length = 0;
    const CPointer<gunichar, g_free> letters(
        g_utf8_to_ucs4_fast(text.data(), static_cast<glong>(text.size()), &length));
    std::vector<FriBidiCharType> types(static_cast<std::size_t>(length));
    const auto count = static_cast<FriBidiStrIndex>(length);
    fribidi_get_bidi_types(letters.get(), count, types.data());
    return fribidi_get_par_direction(types.data(), count) == FRIBIDI_PAR_RTL;
}

double points(int pangoUnits) {
    return static_cast<double>(pangoUnits) / PANGO_SCALE;
}

double width(PangoLayoutLine& line) {
    PangoRectangle logical;
    pango_layout_line_get_extents(&line, nullptr, &logical);
    return points(logical.width);
}

double widthOfLines(PangoLayout* layout) {
    double widest = 0;
    for (int i = 0; i < std::min(pango_layout_get_line_count(layout), TextLayout::kMaxLines); ++i)
        widest = std::max(widest, width(*pango_layout_get_line_readonly(layout, i)));
    return widest;
}

using Breaks = std::vector<std::pair<int, int>>;

Breaks breaks(PangoLayout* layout, double width) {
    pango_layout_set_width(layout, static_cast<int>(width) * PANGO_SCALE);
    Breaks found;
    for (int i = 0; i < std::min(pango_layout_get_line_count(layout), TextLayout::kMaxLines); ++i) {
        const auto& line = *pango_layout_get_line_readonly(layout, i);
        found.emplace_back(line.start_index, line.length);
    }
    return found;
}

/// The extent of a line above and below its baseline.
struct Reach {
    double ascent = 0;
    double descent = 0;

    void include(PangoFont* font) {
        const auto metric = [font](hb_ot_metrics_tag_t tag) {
            hb_position_t value = 0;
            // A font without the table gives 0 and adds nothing to the line's height.
            hb_ot_metrics_get_position(pango_font_get_hb_font(font), tag, &value);
            return std::round(points(std::abs(value)));
        };
        ascent = std::max(ascent, metric(HB_OT_METRICS_TAG_HORIZONTAL_CLIPPING_ASCENT));
        descent = std::max(descent, metric(HB_OT_METRICS_TAG_HORIZONTAL_CLIPPING_DESCENT));
    }
};

}  // namespace

TextLayout::Impl::Impl(const std::string& text, const Font& font, double width)
    : askedWidth(width) {
    const auto letters = withLines(readable(text));
    rightToLeft = isRightToLeft(letters);
    layout.reset(pango_layout_new(
        PangoContexts::forDirection(rightToLeft ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR)));
    // All lines have one direction.
    pango_layout_set_auto_dir(layout.get(), FALSE);
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    const auto description = pangoFont(font);
    pango_layout_set_font_description(layout.get(), description.get());

    // Whole points, so that the reported width yields the same lines.
    const double lineWidth = std::floor(std::clamp(width, 0.0, kMaxLineWidth));
    Breaks wanted;
    // Pango lays out the whole text, so a long one is passed only as far as its lines are needed.
    std::size_t length = 0;
    for (std::size_t step = 512; length < letters.size() && wanted.size() < kMaxLines; step *= 2) {
        length = endOfLetter(letters, length + step);
        pango_layout_set_text(layout.get(), letters.data(), static_cast<int>(length));
        wanted = breaks(layout.get(), lineWidth);
    }
    double fitted = std::min(std::ceil(widthOfLines(layout.get())), lineWidth);
    // Scripts that reshape letters at line ends may need more width than the lines measure.
    for (double step = 1; wanted.size() > 1 && breaks(layout.get(), fitted) != wanted; step *= 2)
        fitted = std::min(fitted + step, lineWidth);
    size.width = fitted;
    placeLines(lineWidth);
}

void TextLayout::Impl::placeLines(double lineWidth) {
    Reach least;
    const auto* description = pango_layout_get_font_description(layout.get());
    const CPointer<PangoFont, g_object_unref> font(
        pango_context_load_font(pango_layout_get_context(layout.get()), description));
    if (font) least.include(font.get());

    for (int i = 0; i < std::min(pango_layout_get_line_count(layout.get()), kMaxLines); ++i) {
        auto* const line = pango_layout_get_line(layout.get(), i);
        Reach reach = least;
        for (const auto* run = line->runs; run; run = run->next)
            reach.include(static_cast<PangoLayoutRun*>(run->data)->item->analysis.font);
        const double left = rightToLeft ? lineWidth - width(*line) : 0;
        lines.push_back(
            {LayoutLinePointer(pango_layout_line_ref(line)), {left, size.height + reach.ascent}});
        size.height += reach.ascent + reach.descent;
    }
}

bool TextLayout::prepare() {
    return findFontsInBackground();
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
