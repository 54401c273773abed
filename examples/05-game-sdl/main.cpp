// SPDX-License-Identifier: MIT
#include <SDL.h>

#include <cstdio>

#include "VexmoraSDK/sdl/VexmoraSdlLoop.h"
#include "VexmoraSDK/sdl/VexmoraSdlView.h"

using namespace VexmoraSDK;

// A banner at the bottom of a game on SDL that draws a square.
int main(int, char**) {
    SDL_Init(SDL_INIT_VIDEO);
    SDL_Window* window = SDL_CreateWindow("Game", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED,
                                          360, 640, SDL_WINDOW_RESIZABLE);
    SDL_Renderer* renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_PRESENTVSYNC);
    SDL_RenderSetLogicalSize(renderer, 360, 640);
    {
        VexmoraSdlLoop loop;
        AdSlot::Delegate delegate;
        delegate.didReceiveAd = [](VexmoraView&) { std::puts("didReceiveAd"); };
        delegate.failed = [](const AdSlot::Failure& failure) {
            std::printf("failed: %s\n", failure.description.c_str());
        };
        AdSlot slot(delegate);
        slot.setPlacement({.containerId = "home-bottom", .adSize = "320x60"});
        VexmoraSdlView banner(renderer, slot);

        for (bool running = true; running;) {
            SDL_Event event;
            while (SDL_PollEvent(&event)) {
                if (event.type == SDL_QUIT) running = false;
                if (banner.handle(event)) continue;
                // The game's own input.
            }
            loop.run();

            SDL_SetRenderDrawColor(renderer, 20, 24, 44, 255);
            SDL_RenderClear(renderer);
            const auto time = static_cast<float>(SDL_GetTicks() % 3000) / 3000;
            const SDL_FRect square = {20 + 280 * time, 280, 40, 40};
            SDL_SetRenderDrawColor(renderer, 112, 161, 255, 255);
            SDL_RenderFillRectF(renderer, &square);
            banner.draw({20, 570, 320, 60});
            SDL_RenderPresent(renderer);
        }
    }
    SDL_DestroyRenderer(renderer);
    SDL_DestroyWindow(window);
    SDL_Quit();
    return 0;
}
