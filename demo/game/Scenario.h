// SPDX-License-Identifier: MIT
#pragma once

#include <SDL.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "demo/LocalAdServer.h"
#include "demo/game/Bot.h"
#include "demo/game/GameApp.h"

/// Plays the whole game without a display and with a clock of its own. Prints each event on a line
/// and writes a picture of each step.
class Scenario {
 public:
    /// Throws std::exception when setup fails.
    Scenario(LocalAdServer& server, std::filesystem::path out);
    ~Scenario();

    /// Plays the game. Throws std::exception when an expected event does not come.
    void run();

 private:
    struct Destroy {
        void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
        void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
    };

    void begin(const std::string& step);
    void hear(const std::string& event, const std::string& details);
    /// Waits until all of `events` have come since the step began, in any order.
    void waitFor(std::vector<std::string> events);
    /// Waits until an address was passed to the opener, which opens nothing.
    void waitForOpenedAddress();
    void frame();
    void pass(std::chrono::milliseconds time);
    void click(float x, float y);
    void send(Uint32 type, float x, float y);
    void press(SDL_Keycode key);
    /// Moves the paddle under the ball until the phase changes, for at most `longest`.
    void play(std::chrono::milliseconds longest);
    void finishLevel();
    void writePicture();

    LocalAdServer& server_;
    const std::filesystem::path out_;
    std::filesystem::path opener_;
    std::unique_ptr<SDL_Surface, Destroy> surface_;
    std::unique_ptr<SDL_Renderer, Destroy> renderer_;
    std::unique_ptr<GameApp> app_;
    std::chrono::milliseconds now_{0};
    Bot bot_{7};
    std::string step_;
    std::vector<std::string> heard_;
};
