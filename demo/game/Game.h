// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <vector>

/// The rules of the game: a ball, a paddle and three levels of bricks. Knows nothing of screens and
/// ads. Lengths are points of a screen of 360 × 640, times are seconds.
class Game {
 public:
    static constexpr float kWidth = 360;
    static constexpr float kTop = 48;
    static constexpr float kBottom = 560;
    static constexpr float kBallRadius = 6;
    static constexpr float kPaddleY = 526;
    static constexpr float kPaddleHeight = 12;
    static constexpr int kLevels = 3;
    /// The length of a step of the game.
    static constexpr float kStep = 1.0f / 120;

    enum class Phase { ready, playing, paused, levelDone, over, won };

    struct Point {
        float x = 0;
        float y = 0;
    };

    struct Brick {
        Point position;
        int color = 0;
        /// Hits left; 0 means gone.
        int hits = 1;

        static constexpr float kWidth = 38;
        static constexpr float kHeight = 16;
    };

    /// A flying piece of a brick that was hit.
    struct Spark {
        Point position;
        Point velocity;
        int color = 0;
        float life = 1;
    };

    /// A gift falls out of some bricks. When caught, it widens the paddle or adds a ball.
    struct Gift {
        enum class Kind { widePaddle, ball };
        Kind kind = Kind::widePaddle;
        Point position;
    };

    struct Ball {
        Point position;
        Point velocity;
    };

    explicit Game(std::uint32_t seed) : random_(seed) { startOver(); }

    void startOver();
    /// Call it in the phase `levelDone`.
    void startNextLevel();
    /// Launches the ball. Does nothing except in the phase `ready`.
    void launch();
    void pause();
    void resume();
    /// Moves the middle of the paddle to `x`, as far as the walls allow.
    void movePaddleTo(float x);
    /// Advances by `kStep`.
    void step();

    Phase phase() const { return phase_; }
    /// Counted from 1.
    int level() const { return level_; }
    int lives() const { return lives_; }
    int score() const { return score_; }
    int best() const { return best_; }
    /// The bricks hit since the last paddle contact, which multiply the score.
    int combo() const { return combo_; }
    float paddleX() const { return paddleX_; }
    float paddleWidth() const { return wideFor_ > 0 ? 104.0f : 72.0f; }
    const std::vector<Brick>& bricks() const { return bricks_; }
    const std::vector<Ball>& balls() const { return balls_; }
    const std::vector<Spark>& sparks() const { return sparks_; }
    const std::vector<Gift>& gifts() const { return gifts_; }

 private:
    void startLevel();
    void putBallOnPaddle();
    float ballSpeed() const;
    void moveBall(Ball& ball);
    void bounceOffWalls(Ball& ball);
    void bounceOffPaddle(Ball& ball);
    void bounceOffBricks(Ball& ball);
    void hit(Brick& brick);
    void moveGifts();
    void moveSparks();
    void loseLife();
    float randomBetween(float least, float most);

    std::mt19937 random_;
    Phase phase_ = Phase::ready;
    int level_ = 1;
    int lives_ = 3;
    int score_ = 0;
    int best_ = 0;
    int combo_ = 0;
    float paddleX_ = kWidth / 2;
    float wideFor_ = 0;
    std::vector<Brick> bricks_;
    std::vector<Ball> balls_;
    std::vector<Spark> sparks_;
    std::vector<Gift> gifts_;
};
