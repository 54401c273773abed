// SPDX-License-Identifier: MIT
#include <SDL.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <optional>
#include <random>
#include <string>

#include "demo/LocalAdServer.h"
#include "demo/game/Bot.h"
#include "demo/game/GameApp.h"
#include "demo/game/Scenario.h"

namespace {

constexpr const char* kUsage =
    "Usage: vexmora-game [--autoplay] [--headless --out DIR]\n"
    "\n"
    "Plays Brickfall, a small game with ads, served by a mock ad server of its own.\n"
    "\n"
    "  --autoplay   move the paddle by itself\n"
    "  --headless   play a fixed scenario without a display, tell each event on a line\n"
    "  --out DIR    where the scenario puts a picture of each step\n"
    "  --help       show this text\n";

struct Options {
    bool help = false;
    bool autoplay = false;
    bool headless = false;
    std::optional<std::string> out;
};

std::optional<Options> parse(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--help") {
            options.help = true;
        } else if (argument == "--autoplay") {
            options.autoplay = true;
        } else if (argument == "--headless") {
            options.headless = true;
        } else if (argument == "--out" && i + 1 < argc) {
            options.out = argv[++i];
        } else {
            return std::nullopt;
        }
    }
    return options.headless == options.out.has_value() ? std::optional(options) : std::nullopt;
}

std::chrono::milliseconds sinceStart() {
    return std::chrono::milliseconds(SDL_GetTicks64());
}

void playInWindow(bool autoplay) {
    const std::unique_ptr<SDL_Window, void (*)(SDL_Window*)> window(
        SDL_CreateWindow("Brickfall", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, 360, 640,
                         SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI),
        SDL_DestroyWindow);
    const std::unique_ptr<SDL_Renderer, void (*)(SDL_Renderer*)> renderer(
        SDL_CreateRenderer(window.get(), -1, SDL_RENDERER_PRESENTVSYNC), SDL_DestroyRenderer);
    if (!renderer) throw std::runtime_error(SDL_GetError());

    GameApp app(renderer.get(), std::random_device()(),
                [](const std::string& event, const std::string& details) {
                    std::printf("%s %s\n", event.c_str(), details.c_str());
                    std::fflush(stdout);
                });
    Bot bot(1);
    for (bool running = true; running;) {
        SDL_Event event;
        // Nothing moves on a paused screen: the game sleeps until something happens.
        const auto sleep = static_cast<int>(app.maySleep().count());
        for (bool some = SDL_WaitEventTimeout(&event, sleep) != 0; some;
             some = SDL_PollEvent(&event) != 0) {
            if (event.type == SDL_QUIT) running = false;
            app.handle(event);
        }
        if (autoplay) {
            app.game().launch();
            app.game().movePaddleTo(bot.paddleX(app.game()));
        }
        app.advance(sinceStart());
        app.draw();
        SDL_RenderPresent(renderer.get());
    }
}

int run(const Options& options) {
    if (options.headless) SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
    SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "linear");
    if (SDL_Init(SDL_INIT_VIDEO | SDL_INIT_GAMECONTROLLER) != 0)
        throw std::runtime_error(SDL_GetError());
    LocalAdServer server;
    if (options.headless) {
        Scenario(server, *options.out).run();
    } else {
        playInWindow(options.autoplay);
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) try {
    const auto options = parse(argc, argv);
    if (!options || options->help) {
        std::fputs(kUsage, options ? stdout : stderr);
        return options ? 0 : 2;
    }
    const int result = run(*options);
    SDL_Quit();
    return result;
} catch (const std::exception& error) {
    std::fprintf(stderr, "vexmora-game: %s\n", error.what());
    return 1;
}
