// SPDX-License-Identifier: MIT
#include "demo/game/Game.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace {

// A digit is a brick's colour. A capital letter is a brick that takes two hits.
constexpr std::array<std::array<std::string_view, 8>, Game::kLevels> kPlans = {{
    {"        ", "00000000", " 111111 ", "  2222  ", "   33   ", "        ", "44    44",
     "        "},
    {"55    55", "05500550", "  0550  ", "AAAAAAAA", "  1  1  ", " 11  11 ", "222  222",
     "   33   "},
    {"F0F0F0F0", "1A1A1A1A", "B2B2B2B2", "        ", " 333333 ", " 3DDDD3 ", " 344443 ",
     "E      E"},
}};

constexpr float kColumnWidth = 42;
constexpr float kRowHeight = 20;
constexpr float kFirstRow = Game::kTop + 28;
constexpr float kGiftSpeed = 110;
constexpr float kWideTime = 12;

Game::Brick brickAt(std::size_t row, std::size_t column, char plan) {
    const bool isHard = plan >= 'A';
    const float left = (Game::kWidth - 8 * kColumnWidth) / 2 + 2;
    return {{left + static_cast<float>(column) * kColumnWidth,
             kFirstRow + static_cast<float>(row) * kRowHeight},
            isHard ? plan - 'A' : plan - '0',
            isHard ? 2 : 1};
}

}  // namespace

void Game::startOver() {
    level_ = 1;
    lives_ = 3;
    score_ = 0;
    startLevel();
}

void Game::startNextLevel() {
    if (phase_ != Phase::levelDone) return;
    ++level_;
    startLevel();
}

void Game::startLevel() {
    bricks_.clear();
    const auto& plan = kPlans[static_cast<std::size_t>(level_ - 1)];
    for (std::size_t row = 0; row < plan.size(); ++row) {
        for (std::size_t column = 0; column < plan[row].size(); ++column) {
            if (plan[row][column] != ' ')
                bricks_.push_back(brickAt(row, column, plan[row][column]));
        }
    }
    sparks_.clear();
    putBallOnPaddle();
}

void Game::putBallOnPaddle() {
    phase_ = Phase::ready;
    combo_ = 0;
    wideFor_ = 0;
    gifts_.clear();
    balls_ = {{{paddleX_, kPaddleY - kBallRadius}, {}}};
}

float Game::ballSpeed() const {
    return 360.0f + 35.0f * static_cast<float>(level_);
}

void Game::launch() {
    if (phase_ != Phase::ready) return;
    phase_ = Phase::playing;
    const float angle = randomBetween(-0.5f, 0.5f);
    balls_.front().velocity = {ballSpeed() * std::sin(angle), -ballSpeed() * std::cos(angle)};
}

void Game::pause() {
    if (phase_ == Phase::playing) phase_ = Phase::paused;
}

void Game::resume() {
    if (phase_ == Phase::paused) phase_ = Phase::playing;
}

void Game::movePaddleTo(float x) {
    if (phase_ != Phase::playing && phase_ != Phase::ready) return;
    paddleX_ = std::clamp(x, paddleWidth() / 2, kWidth - paddleWidth() / 2);
    if (phase_ == Phase::ready) balls_.front().position.x = paddleX_;
}

void Game::step() {
    moveSparks();
    if (phase_ != Phase::playing) return;
    wideFor_ = std::max(0.0f, wideFor_ - kStep);
    for (auto& ball : balls_)
        moveBall(ball);
    moveGifts();
    std::erase_if(balls_, [](const Ball& ball) { return ball.position.y > kBottom; });
    const bool cleared =
        std::ranges::all_of(bricks_, [](const Brick& brick) { return brick.hits == 0; });
    if (cleared) {
        phase_ = level_ < kLevels ? Phase::levelDone : Phase::won;
    } else if (balls_.empty()) {
        loseLife();
    }
    best_ = std::max(best_, score_);
}

void Game::loseLife() {
    --lives_;
    putBallOnPaddle();
    if (lives_ == 0) phase_ = Phase::over;
}

void Game::moveBall(Ball& ball) {
    ball.position.x += ball.velocity.x * kStep;
    ball.position.y += ball.velocity.y * kStep;
    bounceOffWalls(ball);
    bounceOffPaddle(ball);
    bounceOffBricks(ball);
}

void Game::bounceOffWalls(Ball& ball) {
    if (ball.position.x < kBallRadius) ball.velocity.x = std::abs(ball.velocity.x);
    if (ball.position.x > kWidth - kBallRadius) ball.velocity.x = -std::abs(ball.velocity.x);
    if (ball.position.y < kTop + kBallRadius) ball.velocity.y = std::abs(ball.velocity.y);
}

// A ball bounces flatter the further it hits from the paddle's middle.
void Game::bounceOffPaddle(Ball& ball) {
    if (ball.velocity.y < 0) return;
    const float below = ball.position.y + kBallRadius - kPaddleY;
    const float beside = (ball.position.x - paddleX_) / (paddleWidth() / 2 + kBallRadius);
    if (below < 0 || below > kPaddleHeight || std::abs(beside) > 1) return;
    const float angle = beside * 1.05f;
    ball.velocity = {ballSpeed() * std::sin(angle), -ballSpeed() * std::cos(angle)};
    combo_ = 0;
}

void Game::bounceOffBricks(Ball& ball) {
    for (auto& brick : bricks_) {
        if (brick.hits == 0) continue;
        const float nearestX =
            std::clamp(ball.position.x, brick.position.x, brick.position.x + Brick::kWidth);
        const float nearestY =
            std::clamp(ball.position.y, brick.position.y, brick.position.y + Brick::kHeight);
        const float dx = ball.position.x - nearestX;
        const float dy = ball.position.y - nearestY;
        if (dx * dx + dy * dy > kBallRadius * kBallRadius) continue;
        if (std::abs(dx) > std::abs(dy))
            ball.velocity.x = std::copysign(ball.velocity.x, dx);
        else
            ball.velocity.y = std::copysign(ball.velocity.y, dy);
        hit(brick);
        return;
    }
}

void Game::hit(Brick& brick) {
    --brick.hits;
    ++combo_;
    score_ += 10 * combo_;
    const Point middle = {brick.position.x + Brick::kWidth / 2,
                          brick.position.y + Brick::kHeight / 2};
    const int count = brick.hits == 0 ? 10 : 4;
    for (int i = 0; i < count; ++i) {
        sparks_.push_back({middle,
                           {randomBetween(-120, 120), randomBetween(-140, 60)},
                           brick.color,
                           randomBetween(0.4f, 0.9f)});
    }
    if (brick.hits > 0 || random_() % 8 != 0) return;
    gifts_.push_back({random_() % 2 == 0 ? Gift::Kind::widePaddle : Gift::Kind::ball, middle});
}

void Game::moveGifts() {
    for (auto& gift : gifts_) {
        gift.position.y += kGiftSpeed * kStep;
        const bool caught = std::abs(gift.position.y - kPaddleY) < kPaddleHeight &&
                            std::abs(gift.position.x - paddleX_) < paddleWidth() / 2 + 10;
        if (!caught) continue;
        gift.position.y = kBottom + 1;
        score_ += 50;
        if (gift.kind == Gift::Kind::widePaddle) {
            wideFor_ = kWideTime;
        } else {
            const float angle = randomBetween(-0.7f, 0.7f);
            balls_.push_back({{paddleX_, kPaddleY - kBallRadius},
                              {ballSpeed() * std::sin(angle), -ballSpeed() * std::cos(angle)}});
        }
    }
    std::erase_if(gifts_, [](const Gift& gift) { return gift.position.y > kBottom; });
}

void Game::moveSparks() {
    for (auto& spark : sparks_) {
        spark.velocity.y += 320 * kStep;
        spark.position.x += spark.velocity.x * kStep;
        spark.position.y += spark.velocity.y * kStep;
        spark.life -= kStep;
    }
    std::erase_if(sparks_, [](const Spark& spark) { return spark.life <= 0; });
}

float Game::randomBetween(float least, float most) {
    return least + (most - least) * static_cast<float>(random_() % 10'000) / 10'000;
}
