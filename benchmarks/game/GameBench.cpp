// SPDX-License-Identifier: MIT
// Measures the library in a game on SDL, without a display. Prints JSON.
//   vexmora-game-bench one-by-one LIBRARY COUNT   time to ad, against the floor
//   vexmora-game-bench frames LIBRARY COUNT       processor time in the SDK's calls of each frame
//   vexmora-game-bench start LIBRARY              shows a banner, says so, and waits for its input
//   vexmora-game-bench window LIBRARY             the same with an empty window

#include <SDL.h>
#include <curl/curl.h>
#include <dlfcn.h>
#include <time.h>

#include <algorithm>
#include <boost/json.hpp>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <new>
#include <optional>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/config/Config.h"
#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/sdl/VexmoraSdlLoop.h"
#include "VexmoraSDK/sdl/VexmoraSdlScreen.h"
#include "VexmoraSDK/sdl/VexmoraSdlView.h"
#include "benchmarks/game/GameFloor.h"

namespace {

long allocationsOfMainThread = 0;
thread_local bool isMainThread = false;

int uploads = 0;

}  // namespace

// Stands before that of SDL, for the library too.
int SDL_UpdateTexture(SDL_Texture* texture, const SDL_Rect* rect, const void* pixels, int pitch) {
    ++uploads;
    static auto* const next =
        reinterpret_cast<decltype(&SDL_UpdateTexture)>(dlsym(RTLD_NEXT, "SDL_UpdateTexture"));
    return next(texture, rect, pixels, pitch);
}

void* operator new(std::size_t size) {
    if (isMainThread) ++allocationsOfMainThread;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace VexmoraSDK::benchmarks {
namespace {

using namespace std::chrono_literals;
using Milliseconds = std::chrono::duration<double, std::milli>;
using Kind = GameFloorAd::Kind;

struct KindName {
    const char* name;
    Kind kind;
    VexmoraAdType type;
};
constexpr KindName kKinds[] = {
    {"banner", Kind::banner, VexmoraAdType::banner},
    {"native", Kind::native, VexmoraAdType::native},
    {"interstitial", Kind::interstitial, VexmoraAdType::mediumRectangle}};

// Its pictures may not be cached, so that every contender downloads them each time.
constexpr const char* kContainer = "fault-picture-no-store";

Milliseconds threadTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

struct Window {
    Window() { SDL_RenderSetLogicalSize(renderer, 360, 640); }

    SDL_Window* window = SDL_CreateWindow("", 0, 0, 360, 640, 0);
    SDL_Renderer* renderer = SDL_CreateRenderer(window, -1, SDL_RENDERER_SOFTWARE);
};

struct Game : Window {
    VexmoraSdlLoop loop;
};

/// Sleeps until an event arrives, and handles it.
void sleep(std::optional<std::chrono::milliseconds> longest) {
    SDL_Event event;
    SDL_WaitEventTimeout(&event, longest ? static_cast<int>(longest->count()) : 1000);
}

std::string addressOf(VexmoraAdType type) {
    auto address = *Config::instance().settingForKey<std::string>("requestUrlFormat");
    for (const auto& value : {std::string(kContainer), std::to_string(static_cast<int>(type))})
        address.replace(address.find("%@"), 2, value);
    return address;
}

/// Returns the time until the ad is drawn into the frame.
Milliseconds showSdkAd(Game& game, const KindName& kind) {
    const auto begin = std::chrono::steady_clock::now();
    AdSlot slot{AdSlot::Delegate()};
    std::optional<VexmoraSdlScreen> screen;
    std::optional<VexmoraSdlView> view;
    if (kind.kind == Kind::interstitial)
        screen.emplace(game.renderer, slot);
    else
        view.emplace(game.renderer, slot);
    slot.setPlacement({.containerId = kContainer, .adType = kind.type});
    for (;;) {
        const auto next = game.loop.run();
        if (slot.state() == AdSlot::State::ready) break;
        if (slot.state() == AdSlot::State::failed) std::exit(1);
        sleep(next);
    }
    if (screen) {
        screen->present();
        screen->draw(0ms);
        screen->draw(1s);  // when the ad has moved in
    } else {
        view->draw({0, 0, 320, 60});
    }
    return std::chrono::steady_clock::now() - begin;
}

Milliseconds showFloorAd(Game& game, GameFloor& floor, const KindName& kind) {
    const auto begin = std::chrono::steady_clock::now();
    std::optional<GameFloorAd> drawn;
    floor.fetch(addressOf(kind.type),
                [&](const GameFloor::Ad& ad) { drawn.emplace(game.renderer, kind.kind, ad); });
    for (;;) {
        floor.run();
        if (drawn) break;
        sleep(std::nullopt);
    }
    drawn->draw(game.renderer);
    return std::chrono::steady_clock::now() - begin;
}

boost::json::object oneByOne(int count) {
    Game game;
    GameFloor floor([] {
        SDL_Event event{};
        event.type = VexmoraSdlLoop::wakeUpEvent();
        SDL_PushEvent(&event);
    });
    boost::json::object result;
    constexpr int kWarmUp = 20;
    for (const auto& kind : kKinds) {
        boost::json::array sdk;
        boost::json::array byHand;
        for (int i = -kWarmUp; i < count; ++i) {
            const auto theirs = showFloorAd(game, floor, kind);
            const auto ours = showSdkAd(game, kind);
            SDL_RenderPresent(game.renderer);
            SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
            if (i < 0) continue;
            sdk.emplace_back(ours.count());
            byHand.emplace_back(theirs.count());
        }
        result[kind.name] = {{"sdk", sdk}, {"floor", byHand}};
    }
    return result;
}

/// Runs frames at 60 per second, with a new banner every ten seconds (the shortest interval), a
/// native ad every twenty and an interstitial every minute.
boost::json::object frames(int count) {
    isMainThread = true;
    Game game;
    AdSlot banner{AdSlot::Delegate()};
    AdSlot native{AdSlot::Delegate()};
    AdSlot interstitial{AdSlot::Delegate()};
    VexmoraSdlView bannerView(game.renderer, banner);
    VexmoraSdlView nativeView(game.renderer, native);
    VexmoraSdlScreen screen(game.renderer, interstitial);
    banner.setPlacement({.containerId = kContainer, .adType = VexmoraAdType::banner});
    native.setPlacement({.containerId = kContainer, .adType = VexmoraAdType::native});
    interstitial.setPlacement(
        {.containerId = kContainer, .adType = VexmoraAdType::mediumRectangle});

    boost::json::array worked;
    boost::json::array waited;
    SDL_Event closeKey{};
    closeKey.type = SDL_KEYDOWN;
    closeKey.key.windowID = SDL_GetWindowID(game.window);
    closeKey.key.keysym.sym = SDLK_ESCAPE;
    for (int i = 0; i < count; ++i) {
        const auto began = std::chrono::steady_clock::now();
        const auto before = threadTime();
        if (i % 600 == 599) banner.reload();
        if (i % 1200 == 1199) native.reload();
        if (i % 3600 == 3000) screen.present();
        if (i % 3600 == 3200) screen.handle(closeKey);
        if (i % 3600 == 3300) interstitial.reload();
        game.loop.run();
        bannerView.draw({20, 572, 320, 60});
        nativeView.draw({20, 300, 320, 150});
        screen.draw(std::chrono::milliseconds(16 * i));
        worked.emplace_back((threadTime() - before).count());
        waited.emplace_back(Milliseconds(std::chrono::steady_clock::now() - began).count());
        SDL_RenderPresent(game.renderer);
        SDL_Delay(1);
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    }

    for (int i = 0; i < 500; ++i) {  // until the last ads have arrived
        game.loop.run();
        bannerView.draw({20, 572, 320, 60});
        SDL_Delay(1);
    }
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    const long before = allocationsOfMainThread;
    const int uploadsBefore = uploads;
    for (int i = 0; i < 1000; ++i) {
        game.loop.run();
        bannerView.draw({20, 572, 320, 60});
    }
    return {{"worked", worked},
            {"waited", waited},
            {"allocations", allocationsOfMainThread - before},
            {"uploads", uploads - uploadsBefore}};
}

void show(const Window& window) {
    SDL_RenderPresent(window.renderer);
    std::puts("shown");
    std::fflush(stdout);
    std::getchar();
}

void start() {
    Game game;
    AdSlot slot{AdSlot::Delegate()};
    VexmoraSdlView view(game.renderer, slot);
    slot.setPlacement({.containerId = "home-bottom", .adSize = "320x60"});
    while (slot.state() != AdSlot::State::ready) {
        const auto next = game.loop.run();
        if (slot.state() != AdSlot::State::ready) sleep(next);
    }
    view.draw({20, 572, 320, 60});
    show(game);
}

}  // namespace
}  // namespace VexmoraSDK::benchmarks

int main(int argc, char** argv) {
    using namespace VexmoraSDK;
    if (argc < 3) return 2;
    SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
    if (SDL_Init(SDL_INIT_VIDEO) != 0) return 1;
    const std::string mode = argv[1];
    if (mode == "window") {
        benchmarks::show({});
        return 0;
    }
    curl_global_init(CURL_GLOBAL_DEFAULT);
    platform::Bundle::setLibraryFolder(argv[2]);
    const int count = argc > 3 ? std::atoi(argv[3]) : 0;
    if (mode == "one-by-one") std::cout << benchmarks::oneByOne(count) << '\n';
    if (mode == "frames") std::cout << benchmarks::frames(count) << '\n';
    if (mode == "start") benchmarks::start();
    return 0;
}
