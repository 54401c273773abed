// SPDX-License-Identifier: MIT
#include "demo/game/GameApp.h"

#include <gtest/gtest.h>

#include "tests/LocalAds.h"

using namespace VexmoraSDK;
using namespace std::chrono_literals;

namespace {

void press(GameApp& app, SDL_Keycode key) {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.keysym.sym = key;
    app.handle(event);
}

TEST(GameAppTest, SleepsNoLongerThanAnAdThatHasJustComeIntoViewWaits) {
    LocalAds::server();
    SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
    ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
    {
        const std::unique_ptr<SDL_Window, void (*)(SDL_Window*)> window(
            SDL_CreateWindow("", 0, 0, 360, 640, 0), SDL_DestroyWindow);
        const std::unique_ptr<SDL_Renderer, void (*)(SDL_Renderer*)> renderer(
            SDL_CreateRenderer(window.get(), -1, SDL_RENDERER_SOFTWARE), SDL_DestroyRenderer);
        GameApp app(renderer.get(), 1, [](const std::string&, const std::string&) {});
        app.ads().banner().setPlacement({});
        app.ads().interstitial().setPlacement({});
        const auto deadline = std::chrono::steady_clock::now() + 60s;
        while (app.ads().native().state() != AdSlot::State::ready) {
            ASSERT_LT(std::chrono::steady_clock::now(), deadline);
            app.advance(0ms);
            SDL_Event event;
            SDL_WaitEventTimeout(&event, 100);
        }
        EXPECT_GT(app.maySleep(), 1s);

        press(app, SDLK_SPACE);
        press(app, SDLK_p);
        app.advance(0ms);
        EXPECT_LE(app.maySleep(), 1s) << "then the ad has been seen for long enough";
    }
    SDL_Quit();
}

}  // namespace
