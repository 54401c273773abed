// SPDX-License-Identifier: MIT
#pragma once

#include <SDL.h>

#include <chrono>

#include "VexmoraSDK/sdl/VexmoraSdlLoop.h"
#include "demo/game/Canvas.h"
#include "demo/game/Game.h"
#include "demo/game/GameAds.h"
#include "demo/game/Picture.h"

/// The game with its ads on a renderer. Time is what it is told.
class GameApp {
 public:
    GameApp(SDL_Renderer* renderer, std::uint32_t seed, GameAds::Log log);

    void handle(const SDL_Event& event);
    /// Goes on until `now`.
    void advance(std::chrono::milliseconds now);
    void draw();

    /// How long the app may sleep when nothing moves; zero while something does.
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
    /// Up to where the steps of the game have been taken.
    double stepped_ = 0;
    /// Whether the interstitial of the level that is done was presented.
    bool presented_ = false;
};
