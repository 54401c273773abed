// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <random>

#include "demo/game/Game.h"

/// Plays the game by itself.
class Bot {
 public:
    explicit Bot(std::uint32_t seed) : random_(seed) {}

    /// The best position of the paddle: below the lowest ball, hit with another point each time so
    /// that no ball repeats its path for ever.
    float paddleX(const Game& game) {
        const auto& ball = *std::ranges::max_element(
            game.balls(), {}, [](const Game::Ball& each) { return each.position.y; });
        if (ball.velocity.y < 0) aim_ = static_cast<float>(random_() % 56) - 28;
        return ball.position.x + aim_;
    }

 private:
    std::mt19937 random_;
    float aim_ = 0;
};
