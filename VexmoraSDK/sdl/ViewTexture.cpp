// SPDX-License-Identifier: MIT
#include "VexmoraSDK/sdl/ViewTexture.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <span>
#include <utility>

#include "VexmoraSDK/platform/cairo/ViewPainter.h"

namespace VexmoraSDK {
namespace {

// Some renderers do not blend premultiplied colours.
void makeStraight(std::span<std::uint32_t> pixels) {
    for (auto& pixel : pixels) {
        const std::uint32_t alpha = pixel >> 24;
        // Most pixels, which are not written then.
        if (alpha == 0 || alpha == 255) continue;
        const auto channel = [pixel, alpha](int shift) {
            const std::uint32_t value = (pixel >> shift) & 0xFF;
            return std::min<std::uint32_t>(255, (value * 255 + alpha / 2) / alpha) << shift;
        };
        pixel = alpha << 24 | channel(16) | channel(8) | channel(0);
    }
}

}  // namespace

ViewTexture::~ViewTexture() {
    setView(nullptr);
}

void ViewTexture::setView(std::shared_ptr<platform::View> view) {
    if (view_) view_->setDisplayCallback({});
    view_ = std::move(view);
    isOutdated_ = true;
    if (view_) view_->setDisplayCallback([this] { isOutdated_ = true; });
}

void ViewTexture::draw(SDL_FPoint origin, double scale) {
    if (!view_ || scale <= 0) return;
    float pixelsX = 1;
    float pixelsY = 1;
    SDL_RenderGetScale(renderer_, &pixelsX, &pixelsY);
    const platform::Size size = view_->frame().size;
    const double paintScale = std::min(scale * pixelsX, largestScale(size));
    const int width = static_cast<int>(std::ceil(size.width * paintScale));
    const int height = static_cast<int>(std::ceil(size.height * paintScale));
    if (width <= 0 || height <= 0) return;
    if (isOutdated_ || !texture_ || paintedScale_ != paintScale) paint(width, height, paintScale);
    if (!texture_) return;

    // The texture's pixels are aligned with the output's.
    const auto factor = static_cast<float>(scale / paintScale);
    const SDL_FRect target = {
        std::round(origin.x * pixelsX) / pixelsX, std::round(origin.y * pixelsY) / pixelsY,
        static_cast<float>(width) * factor, static_cast<float>(height) * factor};
    SDL_RenderCopyF(renderer_, texture_.get(), nullptr, &target);
}

void ViewTexture::paint(int width, int height, double scale) {
    if (!texture_ || width != width_ || height != height_) {
        texture_.reset(SDL_CreateTexture(renderer_, SDL_PIXELFORMAT_ARGB8888,
                                         SDL_TEXTUREACCESS_STATIC, width, height));
        if (!texture_) return;
        width_ = width;
        height_ = height;
    }
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    const auto pixels = std::make_unique_for_overwrite<std::uint32_t[]>(count);
    const bool opaque = coversItself(width, height, scale);
    if (!opaque) std::memset(pixels.get(), 0, count * sizeof pixels[0]);
    platform::paintView({pixels.get(), width, height, width * 4}, scale, *view_);
    if (!opaque) makeStraight({pixels.get(), count});
    SDL_SetTextureBlendMode(texture_.get(), opaque ? SDL_BLENDMODE_NONE : SDL_BLENDMODE_BLEND);
    SDL_UpdateTexture(texture_.get(), nullptr, pixels.get(), width * 4);
    paintedScale_ = scale;
    isOutdated_ = false;
}

/// Whether the view's own background is opaque and fills a picture of this size.
bool ViewTexture::coversItself(int width, int height, double scale) const {
    const auto color = view_->backgroundColor();
    const platform::Size size = view_->frame().size;
    return color && color->alpha >= 1 && view_->cornerRadius() <= 0 && !view_->isHidden() &&
           size.width * scale == width && size.height * scale == height;
}

double ViewTexture::largestScale(platform::Size view) const {
    SDL_RendererInfo info;
    constexpr int kMaxSide = 8192;
    int width = kMaxSide;
    int height = kMaxSide;
    if (SDL_GetRendererInfo(renderer_, &info) == 0) {
        if (info.max_texture_width > 0) width = std::min(width, info.max_texture_width);
        if (info.max_texture_height > 0) height = std::min(height, info.max_texture_height);
    }
    return std::min(width / view.width, height / view.height);
}

void ViewTexture::handle(const SDL_Event& event) {
    if (event.type == SDL_RENDER_TARGETS_RESET || event.type == SDL_RENDER_DEVICE_RESET)
        texture_.reset();
}

}  // namespace VexmoraSDK
