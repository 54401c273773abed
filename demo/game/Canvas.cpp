// SPDX-License-Identifier: MIT
#include "demo/game/Canvas.h"

#include <cmath>
#include <cstdint>
#include <vector>

#include "VexmoraSDK/platform/cairo/ViewPainter.h"
#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/platform/ui/TextView.h"

using namespace VexmoraSDK::platform;

namespace {

/// More textures than one screen shows.
constexpr std::size_t kMaxTextures = 200;

/// A text view's padding at both ends of its lines.
constexpr float kTextPadding = 5;

Color viewColor(SDL_Color color) {
    return {color.r / 255.0, color.g / 255.0, color.b / 255.0, color.a / 255.0};
}

std::string keyOf(SDL_Color color) {
    std::string key;
    for (const int channel : {color.r, color.g, color.b, color.a})
        key += ',' + std::to_string(channel);
    return key;
}

// The painter's colours are premultiplied; those of SDL's textures are not. Red and blue change
// places, because without a graphics processor SDL blends ABGR alike on every processor, and ARGB
// with instructions that round differently on each.
std::uint32_t straightAbgr(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24;
    if (alpha == 0) return 0;
    const auto channel = [&](int shift) { return ((pixel >> shift) & 0xFF) * 255 / alpha; };
    return alpha << 24 | channel(0) << 16 | channel(8) << 8 | channel(16);
}

std::shared_ptr<View> textView(const std::string& text, const Canvas::Font& font, float width) {
    auto view = TextView::create({{0, 0}, {width + 2 * kTextPadding, 100}});
    view->setTextContainerInset({});
    view->setFont(Font::named(font.bold ? "Helvetica-Bold" : "Helvetica", font.size));
    view->setTextColor(viewColor(font.color));
    view->setText(text);
    view->sizeToFit();
    return view;
}

}  // namespace

void Canvas::fill(SDL_FRect rect, SDL_Color color) {
    SDL_SetRenderDrawBlendMode(renderer_, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(renderer_, color.r, color.g, color.b, color.a);
    SDL_RenderFillRectF(renderer_, &rect);
}

void Canvas::shape(SDL_FRect rect, float radius, SDL_Color color) {
    const auto key = "shape" + std::to_string(rect.w) + ',' + std::to_string(rect.h) + ',' +
                     std::to_string(radius) + keyOf(color);
    const auto& shape = painted(key, [&] {
        auto view = View::create({{0, 0}, {rect.w, rect.h}});
        view->setBackgroundColor(viewColor(color));
        view->setCornerRadius(radius);
        return view;
    });
    copy(shape, rect.x, rect.y);
}

float Canvas::text(const std::string& text, float x, float y, const Font& font, Align align,
                   float width) {
    if (text.empty()) return 0;
    const auto key = text + '\n' + std::to_string(font.size) + (font.bold ? 'b' : ' ') +
                     std::to_string(width) + keyOf(font.color);
    const auto& line =
        painted(key, [&] { return textView(text, font, width > 0 ? width : 10'000); });
    const float free = line.width - 2 * kTextPadding;
    const float left = align == Align::left ? x : align == Align::right ? x - free : x - free / 2;
    copy(line, left - kTextPadding, y);
    return line.height;
}

void Canvas::picture(const std::shared_ptr<const Image>& image, SDL_FRect rect) {
    const auto key = "picture" + std::to_string(reinterpret_cast<std::uintptr_t>(image.get())) +
                     ',' + std::to_string(rect.w) + ',' + std::to_string(rect.h);
    const auto& picture = painted(key, [&] {
        auto view = ImageView::create(image);
        view->setFrame({{0, 0}, {rect.w, rect.h}});
        view->setContentMode(ContentMode::scaleAspectFit);
        return view;
    });
    copy(picture, rect.x, rect.y);
}

template <class MakeView>
const Canvas::Painted& Canvas::painted(const std::string& key, MakeView makeView) {
    if (const auto known = textures_.find(key); known != textures_.end()) return known->second;
    if (textures_.size() >= kMaxTextures) textures_.clear();
    const std::shared_ptr<View> view = makeView();
    return textures_.emplace(key, paint(*view)).first->second;
}

Canvas::Painted Canvas::paint(View& view) {
    float scale = 1;
    SDL_RenderGetScale(renderer_, &scale, nullptr);
    const auto size = view.frame().size;
    const int width = static_cast<int>(std::ceil(size.width * scale));
    const int height = static_cast<int>(std::ceil(size.height * scale));
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) *
                                      static_cast<std::size_t>(height));
    paintView({pixels.data(), width, height, 4 * width}, scale, view);
    for (auto& pixel : pixels)
        pixel = straightAbgr(pixel);
    Painted painted{static_cast<float>(width) / scale, static_cast<float>(height) / scale, {}};
    painted.texture.reset(SDL_CreateTexture(renderer_, SDL_PIXELFORMAT_ABGR8888,
                                            SDL_TEXTUREACCESS_STATIC, width, height));
    SDL_SetTextureBlendMode(painted.texture.get(), SDL_BLENDMODE_BLEND);
    SDL_UpdateTexture(painted.texture.get(), nullptr, pixels.data(), 4 * width);
    return painted;
}

void Canvas::copy(const Painted& painted, float x, float y) {
    const SDL_FRect target = {x, y, painted.width, painted.height};
    SDL_RenderCopyF(renderer_, painted.texture.get(), nullptr, &target);
}
