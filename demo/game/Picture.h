// SPDX-License-Identifier: MIT
#pragma once

#include <SDL.h>

#include <chrono>

#include "demo/game/Canvas.h"
#include "demo/game/Game.h"
#include "demo/game/GameAds.h"

/// The layout of the screen of 360 × 640 points.
namespace place {

inline constexpr SDL_FRect kBanner = {20, 572, 320, 60};
inline constexpr SDL_FRect kPauseButton = {316, 8, 36, 32};
inline constexpr SDL_FRect kNativeAd = {20, 330, 320, 132};

inline bool contains(const SDL_FRect& rect, float x, float y) {
    return x >= rect.x && x < rect.x + rect.w && y >= rect.y && y < rect.y + rect.h;
}

}  // namespace place

/// Draws the game, and the native ad on the pause screen from its texts and picture.
class Picture {
 public:
    explicit Picture(Canvas& canvas) : canvas_(canvas) {}

    void draw(const Game& game, const GameAds& ads, std::chrono::milliseconds now);

 private:
    void drawBackground();
    void drawStatus(const Game& game);
    void drawField(const Game& game);
    void drawMessage(const Game& game, std::chrono::milliseconds now);
    void drawPause(const VexmoraSDK::AdSlot& native);
    void drawNativeAd(const VexmoraSDK::AdSlot::Ad& ad);

    Canvas& canvas_;
};
