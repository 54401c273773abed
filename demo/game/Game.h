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
    /// The game goes on in steps of that length.
    static constexpr float kStep = 1.0f / 120;

    enum class Phase { ready, playing, paused, levelDone, over, won };

    struct Point {
        float x = 0;
        float y = 0;
    };

    struct Brick {
        Point position;
        int color = 0;
        /// How many more hits it takes; none when it is gone.
        int hits = 1;

        static constexpr float kWidth = 38;
        static constexpr float kHeight = 16;
    };

    /// A piece of a brick that was hit, or what falls out of one.
    struct Spark {
        Point position;
        Point velocity;
        int color = 0;
        float life = 1;
    };

    /// Falls out of some bricks; caught, it makes the paddle wider or adds a ball.
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
    /// After `levelDone`.
    void startNextLevel();
    /// Lets the ball go; does nothing but in the phase `ready`.
    void launch();
    void pause();
    void resume();
    /// Puts the middle of the paddle there, as far as the walls allow.
    void movePaddleTo(float x);
    /// Goes on by `kStep`.
    void step();

    Phase phase() const { return phase_; }
    /// From 1.
    int level() const { return level_; }
    int lives() const { return lives_; }
    int score() const { return score_; }
    int best() const { return best_; }
    /// How many bricks were hit since the paddle; each counts so many times.
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
