// SPDX-License-Identifier: MIT
#pragma once

#include <SDL.h>

#include <chrono>

#include "VexmoraSDK/sdl/VexmoraSdlLoop.h"
#include "demo/game/Canvas.h"
#include "demo/game/Game.h"
#include "demo/game/GameAds.h"
#include "demo/game/Picture.h"

/// The game and its ads on a renderer. `advance` sets its time.
class GameApp {
 public:
    GameApp(SDL_Renderer* renderer, std::uint32_t seed, GameAds::Log log);

    void handle(const SDL_Event& event);
    /// Advances the game to `now`.
    void advance(std::chrono::milliseconds now);
    void draw();

    /// The time that the app may sleep; zero while something moves.
    std::chrono::milliseconds maySleep() const;

    Game& game() { return game_; }
    GameAds& ads() { return ads_; }

 private:
    void press(float x, float y);
    void goOn();
    void step();
    bool moves() const;
    void showCursor();

    SDL_Renderer* const renderer_;
    VexmoraSDK::VexmoraSdlLoop loop_;
    Game game_;
    GameAds ads_;
    Canvas canvas_;
    Picture picture_{canvas_};
    std::chrono::milliseconds now_{0};
    /// The time of the game's last step.
    double stepped_ = 0;
    /// Whether the interstitial after this level was presented.
    bool presented_ = false;
};
