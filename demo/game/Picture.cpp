// SPDX-License-Identifier: MIT
#include "demo/game/Picture.h"

#include <array>
#include <cmath>
#include <string>

namespace {

constexpr float kMiddle = Game::kWidth / 2;

constexpr SDL_Color kNight = {13, 17, 33, 255};
constexpr SDL_Color kWhite = {240, 244, 255, 255};
constexpr SDL_Color kSoft = {150, 162, 196, 255};
constexpr SDL_Color kGold = {255, 206, 92, 255};
constexpr SDL_Color kBallColor = {255, 250, 235, 255};

constexpr std::array<SDL_Color, 6> kBrickColors = {{{255, 107, 107, 255},
                                                    {255, 159, 67, 255},
                                                    {254, 211, 48, 255},
                                                    {38, 222, 129, 255},
                                                    {69, 170, 242, 255},
                                                    {165, 94, 234, 255}}};

SDL_Color brickColor(int index) {
    return kBrickColors[static_cast<std::size_t>(index) % kBrickColors.size()];
}

SDL_Color withAlpha(SDL_Color color, float alpha) {
    color.a = static_cast<Uint8>(255 * alpha);
    return color;
}

SDL_Color lighter(SDL_Color color) {
    const auto up = [](Uint8 channel) { return static_cast<Uint8>(channel + (255 - channel) / 3); };
    return {up(color.r), up(color.g), up(color.b), color.a};
}

}  // namespace

void Picture::draw(const Game& game, const GameAds& ads, std::chrono::milliseconds now) {
    drawBackground();
    drawStatus(game);
    drawField(game);
    drawMessage(game, now);
    if (game.phase() == Game::Phase::paused) drawPause(ads.native());
}

void Picture::drawBackground() {
    // A gradient from night to dusk.
    constexpr int kBands = 32;
    for (int i = 0; i < kBands; ++i) {
        const float height = 640.0f / kBands;
        const auto channel = [i](int from, int to) {
            return static_cast<Uint8>(from + (to - from) * i / kBands);
        };
        canvas_.fill({0, static_cast<float>(i) * height, Game::kWidth, height},
                     {channel(kNight.r, 44), channel(kNight.g, 32), channel(kNight.b, 74), 255});
    }
    canvas_.fill({0, Game::kTop - 2, Game::kWidth, 2}, {255, 255, 255, 24});
    canvas_.fill({0, Game::kBottom + 4, Game::kWidth, 76}, {0, 0, 0, 70});
}

void Picture::drawStatus(const Game& game) {
    canvas_.text("SCORE", 14, 7, {10, true, kSoft});
    canvas_.text(std::to_string(game.score()), 14, 20, {18, true, kWhite});
    canvas_.text("BEST", 110, 7, {10, true, kSoft});
    canvas_.text(std::to_string(game.best()), 110, 20, {18, true, kWhite});
    canvas_.text("LEVEL", 190, 7, {10, true, kSoft});
    canvas_.text(std::to_string(game.level()) + " / " + std::to_string(Game::kLevels), 190, 20,
                 {18, true, kWhite});
    for (int i = 0; i < game.lives(); ++i)
        canvas_.shape({258 + static_cast<float>(i) * 17, 18, 12, 12}, 6, kBallColor);

    const auto& button = place::kPauseButton;
    canvas_.shape(button, 9, {255, 255, 255, 26});
    for (const float x : {button.x + 12, button.x + 20})
        canvas_.shape({x, button.y + 9, 4, 14}, 2, kWhite);
}

void Picture::drawField(const Game& game) {
    for (const auto& brick : game.bricks()) {
        if (brick.hits == 0) continue;
        const auto color = brickColor(brick.color);
        const auto [x, y] = brick.position;
        canvas_.shape({x, y, Game::Brick::kWidth, Game::Brick::kHeight}, 4, color);
        canvas_.shape({x + 3, y + 2, Game::Brick::kWidth - 6, 3}, 1.5f, lighter(color));
        if (brick.hits > 1)
            canvas_.shape({x + 3, y + 6, Game::Brick::kWidth - 6, 7}, 3, {0, 0, 0, 80});
    }
    for (const auto& spark : game.sparks()) {
        canvas_.fill({spark.position.x - 1.5f, spark.position.y - 1.5f, 3, 3},
                     withAlpha(brickColor(spark.color), std::min(1.0f, spark.life * 2)));
    }
    for (const auto& gift : game.gifts()) {
        const bool isBall = gift.kind == Game::Gift::Kind::ball;
        const SDL_FRect rect = {gift.position.x - 13, gift.position.y - 8, 26, 16};
        canvas_.shape(rect, 8, isBall ? kWhite : kGold);
        canvas_.text(isBall ? "+1" : "< >", gift.position.x, gift.position.y - 8,
                     {11, true, kNight}, Canvas::Align::center);
    }
    const float width = game.paddleWidth();
    const SDL_FRect paddle = {game.paddleX() - width / 2, Game::kPaddleY, width,
                              Game::kPaddleHeight};
    canvas_.shape(paddle, 6, {112, 161, 255, 255});
    canvas_.shape({paddle.x + 6, paddle.y + 2, width - 12, 3}, 1.5f, {190, 214, 255, 255});
    for (const auto& ball : game.balls()) {
        const float radius = Game::kBallRadius;
        canvas_.shape(
            {ball.position.x - 2 * radius, ball.position.y - 2 * radius, 4 * radius, 4 * radius},
            2 * radius, withAlpha(kBallColor, 0.12f));
        canvas_.shape({ball.position.x - radius, ball.position.y - radius, 2 * radius, 2 * radius},
                      radius, kBallColor);
    }
    if (game.combo() > 2) {
        canvas_.text("× " + std::to_string(game.combo()), kMiddle, 480, {16, true, kGold},
                     Canvas::Align::center);
    }
}

void Picture::drawMessage(const Game& game, std::chrono::milliseconds now) {
    const auto say = [this](const std::string& title, const std::string& hint) {
        canvas_.text(title, kMiddle, 300, {30, true, kWhite}, Canvas::Align::center);
        canvas_.text(hint, kMiddle, 344, {14, false, kSoft}, Canvas::Align::center);
    };
    switch (game.phase()) {
        case Game::Phase::ready:
            say("Level " + std::to_string(game.level()), "Tap, click or press Space");
            break;
        case Game::Phase::levelDone:
            say("Level " + std::to_string(game.level()) + " done", "Tap for the next one");
            break;
        case Game::Phase::over: say("Game over", "Tap to play again"); break;
        case Game::Phase::won: {
            const auto bounce =
                static_cast<float>(std::abs(std::sin(static_cast<double>(now.count()) / 300)));
            canvas_.text("★", kMiddle, 240 - 12 * bounce, {44, true, kGold}, Canvas::Align::center);
            say("You made it!", "Tap to play again");
            break;
        }
        case Game::Phase::playing:
        case Game::Phase::paused: break;
    }
}

void Picture::drawPause(const VexmoraSDK::AdSlot& native) {
    canvas_.fill({0, 0, Game::kWidth, Game::kBottom + 4}, {8, 10, 22, 205});
    canvas_.text("Paused", kMiddle, 180, {34, true, kWhite}, Canvas::Align::center);
    canvas_.text("Tap to go on", kMiddle, 228, {14, false, kSoft}, Canvas::Align::center);
    if (native.ad()) drawNativeAd(*native.ad());
}

void Picture::drawNativeAd(const VexmoraSDK::AdSlot::Ad& ad) {
    constexpr float kPadding = 12;
    constexpr SDL_FRect kThumbnail = {kPadding, kPadding, 104, 78};
    constexpr SDL_Color kInk = {24, 28, 44, 255};
    constexpr SDL_Color kGray = {104, 110, 132, 255};
    const auto& card = place::kNativeAd;
    canvas_.shape(card, 12, {245, 247, 252, 255});
    canvas_.picture(ad.picture,
                    {card.x + kThumbnail.x, card.y + kThumbnail.y, kThumbnail.w, kThumbnail.h});
    const float left = card.x + kThumbnail.x + kThumbnail.w + kPadding;
    const float width = card.x + card.w - kPadding - left;
    const float title = canvas_.text(ad.title, left, card.y + kPadding - 4, {13, true, kInk},
                                     Canvas::Align::left, width);
    // The number of letters that fit.
    constexpr std::size_t kMaxLetters = 90;
    auto description = ad.description.substr(0, ad.description.find(' ', kMaxLetters));
    if (description.size() < ad.description.size()) description += " …";
    canvas_.text(description, left, card.y + kPadding + title, {11, false, kGray},
                 Canvas::Align::left, width);
    const float below = card.y + card.h - 22;
    canvas_.text("Advertisement", card.x + kPadding, below, {10, true, kGray});
    canvas_.text(ad.displayName, card.x + card.w - kPadding, below, {10, true, kGray},
                 Canvas::Align::right);
}
