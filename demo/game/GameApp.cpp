// SPDX-License-Identifier: MIT
#include "demo/game/GameApp.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

GameApp::GameApp(SDL_Renderer* renderer, std::uint32_t seed, GameAds::Log log)
    : renderer_(renderer), game_(seed), ads_(renderer, std::move(log)), canvas_(renderer) {
    SDL_RenderSetLogicalSize(renderer, 360, 640);
    ads_.load();
}

void GameApp::handle(const SDL_Event& event) {
    if (ads_.screen().handle(event)) return;
    if (ads_.bannerView().handle(event)) return;
    switch (event.type) {
        case SDL_MOUSEMOTION: game_.movePaddleTo(static_cast<float>(event.motion.x)); break;
        case SDL_FINGERMOTION: game_.movePaddleTo(event.tfinger.x * Game::kWidth); break;
        case SDL_MOUSEBUTTONDOWN:
            press(static_cast<float>(event.button.x), static_cast<float>(event.button.y));
            break;
        case SDL_KEYDOWN:
            switch (event.key.keysym.sym) {
                case SDLK_SPACE:
                case SDLK_RETURN: goOn(); break;
                case SDLK_p:
                case SDLK_ESCAPE:
                case SDLK_AC_BACK:
                    game_.phase() == Game::Phase::paused ? game_.resume() : game_.pause();
                    break;
                default: break;
            }
            break;
        case SDL_APP_WILLENTERBACKGROUND: game_.pause(); break;
        case SDL_WINDOWEVENT:
            if (event.window.event == SDL_WINDOWEVENT_FOCUS_LOST) game_.pause();
            if (event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED) canvas_.forgetTextures();
            break;
        case SDL_RENDER_TARGETS_RESET:
        case SDL_RENDER_DEVICE_RESET: canvas_.forgetTextures(); break;
        default: break;
    }
}

void GameApp::press(float x, float y) {
    if (game_.phase() == Game::Phase::playing) {
        if (place::contains(place::kPauseButton, x, y)) game_.pause();
    } else if (game_.phase() == Game::Phase::paused && ads_.native().ad() &&
               place::contains(place::kNativeAd, x, y)) {
        ads_.native().open();
    } else {
        game_.movePaddleTo(x);
        goOn();
    }
}

void GameApp::goOn() {
    switch (game_.phase()) {
        case Game::Phase::ready: game_.launch(); break;
        case Game::Phase::paused: game_.resume(); break;
        case Game::Phase::levelDone:
            presented_ = false;
            game_.startNextLevel();
            break;
        case Game::Phase::over:
        case Game::Phase::won: game_.startOver(); break;
        case Game::Phase::playing: break;
    }
}

void GameApp::step() {
    if (ads_.screen().isPresenting()) return;
    const Uint8* const keys = SDL_GetKeyboardState(nullptr);
    const int direction = keys[SDL_SCANCODE_RIGHT] - keys[SDL_SCANCODE_LEFT];
    constexpr float kPaddleSpeed = 480;
    if (direction != 0) {
        game_.movePaddleTo(game_.paddleX() +
                           static_cast<float>(direction) * kPaddleSpeed * Game::kStep);
    }
    game_.step();
}

void GameApp::advance(std::chrono::milliseconds now) {
    const double seconds = std::chrono::duration<double>(now).count();
    // Time asleep does not advance the game.
    stepped_ = std::max(stepped_, seconds - 0.1);
    now_ = now;
    loop_.run();
    for (; stepped_ < seconds; stepped_ += Game::kStep)
        step();
    if (game_.phase() == Game::Phase::levelDone && !std::exchange(presented_, true))
        ads_.presentInterstitial();
    const bool paused = game_.phase() == Game::Phase::paused && !ads_.screen().isPresenting();
    ads_.native().setVisibleFraction(paused ? 1 : 0);
    ads_.bannerView().setVisibleFraction(ads_.screen().isPresenting() ? 0 : 1);
    showCursor();
}

void GameApp::showCursor() {
    static SDL_Cursor* const arrow = SDL_CreateSystemCursor(SDL_SYSTEM_CURSOR_ARROW);
    static SDL_Cursor* const hand = SDL_CreateSystemCursor(SDL_SYSTEM_CURSOR_HAND);
    SDL_Cursor* const wanted = ads_.bannerView().isHovered() ? hand : arrow;
    if (wanted && SDL_GetCursor() != wanted) SDL_SetCursor(wanted);
}

void GameApp::draw() {
    SDL_SetRenderDrawColor(renderer_, 0, 0, 0, 255);
    SDL_RenderClear(renderer_);
    if (!ads_.screen().coversWindow()) {
        picture_.draw(game_, ads_, now_);
        ads_.bannerView().draw(place::kBanner);
    }
    ads_.screen().draw(now_);
}

bool GameApp::moves() const {
    return game_.phase() == Game::Phase::playing || game_.phase() == Game::Phase::won ||
           !game_.sparks().empty();
}

std::chrono::milliseconds GameApp::maySleep() const {
    if (moves() || (ads_.screen().isPresenting() && !ads_.screen().coversWindow())) return 0ms;
    // Ads that this frame has shown or hidden may change the time that the loop returned before.
    return VexmoraSDK::AdSlot::wakeAll().value_or(1h);
}
