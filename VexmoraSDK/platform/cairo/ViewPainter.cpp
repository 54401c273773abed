// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/cairo/ViewPainter.h"

#include <cairo.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <numbers>

#include "VexmoraSDK/platform/cairo/CPointers.h"
#include "VexmoraSDK/platform/cairo/TextLayoutImpl.h"
#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/platform/ui/TextView.h"

namespace VexmoraSDK::platform {
namespace {

using SurfacePointer = CPointer<cairo_surface_t, cairo_surface_destroy>;
using ContextPointer = CPointer<cairo_t, cairo_destroy>;

void setColor(cairo_t* context, Color color) {
    cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha);
}

void addRectangle(cairo_t* context, Rect rect) {
    cairo_rectangle(context, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}

Rect bounds(const View& view) {
    return {{}, view.frame().size};
}

/// Cairo takes no picture of more than 32,767 pixels on a side, and reduces none that is nearly as
/// large.
constexpr int kMaxSide = 16'384;

// The part of the picture from there on that Cairo can take at once, in the picture's pixels.
void paintPart(cairo_t* context, const Image& image, int left, int top) {
    const int width = std::min(kMaxSide, image.width() - left);
    const int height = std::min(kMaxSide, image.height() - top);
    const auto offset = static_cast<std::ptrdiff_t>(top) * image.width() + left;
    // Cairo only reads them.
    auto* const pixels = const_cast<std::uint32_t*>(image.pixels() + offset);
    const SurfacePointer surface(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixels),
        image.isOpaque() ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, width, height,
        image.bytesPerRow()));
    cairo_save(context);
    cairo_translate(context, left, top);
    cairo_rectangle(context, 0, 0, width, height);
    cairo_clip(context);
    cairo_set_source_surface(context, surface.get(), 0, 0);
    // Averages the pixels of a reduced picture without fading its edges.
    cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_GOOD);
    cairo_pattern_set_extend(cairo_get_source(context), CAIRO_EXTEND_PAD);
    cairo_paint(context);
    cairo_restore(context);
}

void paintImage(cairo_t* context, const ImageView& view) {
    const Rect rect = view.imageRect();
    if (!view.image() || rect.size.width <= 0 || rect.size.height <= 0) return;
    const Image& image = *view.image();
    cairo_save(context);
    cairo_translate(context, rect.origin.x, rect.origin.y);
    cairo_scale(context, rect.size.width / image.width(), rect.size.height / image.height());
    for (int top = 0; top < image.height(); top += kMaxSide) {
        for (int left = 0; left < image.width(); left += kMaxSide)
            paintPart(context, image, left, top);
    }
    cairo_restore(context);
}

void paintLines(cairo_t* context, const TextLayout& text, Point origin, Color color) {
    setColor(context, color);
    for (const auto& [glyphs, baseline] : text.impl().lines) {
        cairo_move_to(context, origin.x + baseline.x, origin.y + baseline.y);
        pango_cairo_show_layout_line(context, glyphs.get());
    }
    cairo_new_path(context);
}

void paintText(cairo_t* context, TextView& view) {
    cairo_save(context);
    addRectangle(context, bounds(view));
    cairo_clip(context);
    paintLines(context, view.layout(), view.layoutOrigin(), view.textColor());
    cairo_restore(context);
}

void addRoundedRectangle(cairo_t* context, Size size, double radius) {
    constexpr double kQuarter = std::numbers::pi / 2;
    const double corner = std::min({radius, size.width / 2, size.height / 2});
    cairo_new_sub_path(context);
    cairo_arc(context, size.width - corner, corner, corner, -kQuarter, 0);
    cairo_arc(context, size.width - corner, size.height - corner, corner, 0, kQuarter);
    cairo_arc(context, corner, size.height - corner, corner, kQuarter, 2 * kQuarter);
    cairo_arc(context, corner, corner, corner, 2 * kQuarter, 3 * kQuarter);
    cairo_close_path(context);
}

void paintBackground(cairo_t* context, const View& view) {
    const auto color = view.backgroundColor();
    if (!color) return;
    if (view.cornerRadius() > 0) {
        addRoundedRectangle(context, view.frame().size, view.cornerRadius());
    } else {
        addRectangle(context, bounds(view));
    }
    setColor(context, *color);
    cairo_fill(context);
}

// The layout is wider than the title, and a right-to-left title lies at its far end.
void paintTitle(cairo_t* context, Button& button) {
    const Point origin = button.layoutOrigin();
    const double left = button.layout().impl().lines.front().baseline.x;
    paintLines(context, button.layout(), {origin.x - left, origin.y}, button.titleColor());
}

void paintOwn(cairo_t* context, View& view) {
    paintBackground(context, view);
    if (const auto* imageView = dynamic_cast<ImageView*>(&view)) {
        paintImage(context, *imageView);
    } else if (auto* textView = dynamic_cast<TextView*>(&view)) {
        paintText(context, *textView);
    } else if (auto* button = dynamic_cast<Button*>(&view)) {
        paintTitle(context, *button);
    }
}

void paintTree(cairo_t* context, View& view) {
    if (view.isHidden()) return;
    paintOwn(context, view);
    for (const auto& subview : view.subviewsInPaintOrder()) {
        const Point origin = subview->frame().origin;
        cairo_translate(context, origin.x, origin.y);
        paintTree(context, *subview);
        cairo_translate(context, -origin.x, -origin.y);
    }
}

}  // namespace

void paintView(const PixelBuffer& buffer, double scale, View& view) {
    const SurfacePointer surface(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(buffer.pixels), CAIRO_FORMAT_ARGB32, buffer.width,
        buffer.height, buffer.bytesPerRow));
    const ContextPointer context(cairo_create(surface.get()));
    cairo_scale(context.get(), scale, scale);
    paintView(context.get(), view);
    cairo_surface_flush(surface.get());
}

void paintView(cairo_t* context, View& view) {
    cairo_save(context);
    paintTree(context, view);
    cairo_restore(context);
}

}  // namespace VexmoraSDK::platform
