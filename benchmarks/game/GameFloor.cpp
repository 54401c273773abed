// SPDX-License-Identifier: MIT
#include "benchmarks/game/GameFloor.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace VexmoraSDK::benchmarks {

namespace {

std::shared_ptr<const platform::Image> decode(const std::string& bytes) {
    return platform::Image::fromData(platform::dataOf(bytes));
}

}  // namespace

GameFloor::GameFloor(std::function<void()> wakeUp)
    : wakeUp_(std::move(wakeUp)), floor_(decode, [this](std::function<void()> task) {
          {
              const std::lock_guard lock(mutex_);
              tasks_.push_back(std::move(task));
          }
          wakeUp_();
      }) {}

void GameFloor::fetch(std::string address, Done done) {
    floor_.fetch(std::move(address), std::move(done));
}

void GameFloor::run() {
    std::deque<std::function<void()>> tasks;
    {
        const std::lock_guard lock(mutex_);
        tasks.swap(tasks_);
    }
    for (const auto& task : tasks)
        task();
}

namespace {

constexpr int kPictureWidth = 132;
constexpr int kPictureHeight = 99;
constexpr double kTextLeft = 140;
constexpr int kTextWidth = 178;

PangoContext* context() {
    static PangoContext* const context = [] {
        PangoContext* made = pango_font_map_create_context(pango_cairo_font_map_get_default());
        pango_context_set_round_glyph_positions(made, FALSE);
        return made;
    }();
    return context;
}

/// Places a text at `y` and adds the text's height to it.
PangoLayout* layOut(const std::string& text, const char* font, double& y) {
    PangoLayout* layout = pango_layout_new(context());
    PangoFontDescription* description = pango_font_description_from_string(font);
    pango_layout_set_font_description(layout, description);
    pango_font_description_free(description);
    pango_layout_set_width(layout, kTextWidth * PANGO_SCALE);
    pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
    int height = 0;
    pango_layout_get_pixel_size(layout, nullptr, &height);
    y += height;
    return layout;
}

void paintPicture(cairo_t* cairo, const platform::Image& image, double x, double y, double width) {
    auto* pixels = const_cast<std::uint32_t*>(image.pixels());
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixels), CAIRO_FORMAT_ARGB32, image.width(),
        image.height(), image.bytesPerRow());
    const double scale = width / image.width();
    cairo_save(cairo);
    cairo_translate(cairo, x, y);
    cairo_scale(cairo, scale, scale);
    cairo_set_source_surface(cairo, surface, 0, 0);
    cairo_paint(cairo);
    cairo_restore(cairo);
    cairo_surface_destroy(surface);
}

}  // namespace

GameFloorAd::GameFloorAd(SDL_Renderer* renderer, Kind kind, const GameFloor::Ad& ad)
    : width_(ad.picture->width()), height_(ad.picture->height()) {
    struct Text {
        PangoLayout* layout;
        double y;
    };
    std::vector<Text> texts;
    double y = 0;
    const auto add = [&](const std::string& text, const char* font) {
        const double top = y;
        texts.push_back({layOut(text, font, y), top});
    };
    if (kind == Kind::interstitial) {
        width_ = 360;
        height_ = 640;
        add("\u00d7", "Nimbus Sans 26px");
    } else if (kind == Kind::native) {
        add(ad.title, "Nimbus Sans Bold 13px");
        add(ad.description, "Nimbus Sans 12px");
        add(ad.displayName, "Nimbus Sans 12px");
        width_ = static_cast<int>(kTextLeft) + kTextWidth;
        height_ = std::max(kPictureHeight, static_cast<int>(std::ceil(y)));
    }

    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width_ * height_));
    cairo_surface_t* surface =
        cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()),
                                            CAIRO_FORMAT_ARGB32, width_, height_, 4 * width_);
    cairo_t* cairo = cairo_create(surface);
    if (kind == Kind::interstitial) {
        cairo_set_source_rgb(cairo, 0.07, 0.08, 0.1);
        cairo_paint(cairo);
        paintPicture(cairo, *ad.picture, (width_ - 300) / 2.0, (height_ - 250) / 2.0, 300);
        cairo_set_source_rgb(cairo, 1, 1, 1);
    } else {
        paintPicture(cairo, *ad.picture, 0, 0,
                     kind == Kind::native ? kPictureWidth : ad.picture->width());
        cairo_set_source_rgb(cairo, 0, 0, 0);
    }
    for (const auto& [layout, top] : texts) {
        cairo_move_to(cairo, kind == Kind::native ? kTextLeft : width_ - 38, top);
        pango_cairo_show_layout(cairo, layout);
        g_object_unref(layout);
    }
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
    texture_ = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STATIC,
                                 width_, height_);
    SDL_UpdateTexture(texture_, nullptr, pixels.data(), 4 * width_);
}

void GameFloorAd::draw(SDL_Renderer* renderer) const {
    const SDL_Rect target = {0, 0, width_, height_};
    SDL_RenderCopy(renderer, texture_, nullptr, &target);
}

}  // namespace VexmoraSDK::benchmarks
