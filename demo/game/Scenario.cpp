// SPDX-License-Identifier: MIT
#include "demo/game/Scenario.h"

#include <cairo.h>
#include <stdlib.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>

using namespace std::chrono_literals;
using Phase = Game::Phase;

namespace {

constexpr auto kDeadline = 30s;
constexpr auto kFrame = 16ms;
/// Pixels per point.
constexpr int kScale = 2;
constexpr std::uint32_t kSeed = 20;

// The position of the button in the shipped interface file.
constexpr SDL_FPoint kCloseButton = {330, 30};

std::filesystem::path makeFolder() {
    std::string path = std::filesystem::temp_directory_path() / "vexmora-game-XXXXXX";
    if (!mkdtemp(path.data())) throw std::runtime_error("no folder is to be had");
    return path;
}

template <class Condition>
void waitUntil(Condition condition, const std::string& what) {
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            throw std::runtime_error("no " + what + " in time");
        SDL_Delay(1);
    }
}

}  // namespace

Scenario::Scenario(LocalAdServer& server, std::filesystem::path out)
    : server_(server),
      out_(std::move(out)),
      opener_(makeFolder()),
      surface_(SDL_CreateRGBSurfaceWithFormat(0, 360 * kScale, 640 * kScale, 32,
                                              SDL_PIXELFORMAT_ARGB8888)),
      renderer_(SDL_CreateSoftwareRenderer(surface_.get())) {
    if (!renderer_) throw std::runtime_error(SDL_GetError());
    std::filesystem::create_directories(out_);
    // Replaces the desktop's opener.
    std::ofstream(opener_ / "xdg-open")
        << "#!/bin/sh\nprintf '%s\\n' \"$1\" > '" << (opener_ / "new").native() << "' && mv '"
        << (opener_ / "new").native() << "' '" << (opener_ / "address").native() << "'\n";
    std::filesystem::permissions(opener_ / "xdg-open", std::filesystem::perms::owner_all);
    setenv("PATH", (opener_.native() + ':' + getenv("PATH")).c_str(), 1);
}

Scenario::~Scenario() {
    std::error_code ignored;
    std::filesystem::remove_all(opener_, ignored);
}

void Scenario::run() {
    begin("00-ready");
    app_ = std::make_unique<GameApp>(
        renderer_.get(), kSeed,
        [this](const std::string& event, const std::string& details) { hear(event, details); });
    app_->ads().banner().setRefreshInterval(0s);
    waitFor({"didReceiveAd banner", "didReceiveAd native", "didReceiveAd interstitial"});
    writePicture();

    begin("01-banner-tap");
    click(180, 600);
    waitFor({"willLeaveApplication banner"});
    waitForOpenedAddress();
    writePicture();

    begin("02-playing");
    click(180, 400);
    play(6s);
    writePicture();

    begin("03-paused");
    click(place::kPauseButton.x + 10, place::kPauseButton.y + 10);
    writePicture();

    begin("04-native-tap");
    click(180, 400);
    waitFor({"willLeaveApplication native"});
    waitForOpenedAddress();
    writePicture();

    begin("05-level-done");
    click(180, 250);
    finishLevel();
    pass(100ms);
    waitFor({"willShowScreen interstitial"});
    writePicture();

    begin("06-interstitial");
    pass(400ms);
    writePicture();

    begin("07-interstitial-closed");
    click(kCloseButton.x, kCloseButton.y);
    pass(400ms);
    waitFor({"willDismissScreen interstitial", "didDismissScreen interstitial",
             "didReceiveAd interstitial"});
    writePicture();

    begin("08-level-2");
    click(180, 300);
    click(180, 300);
    play(8s);
    writePicture();

    begin("09-level-3");
    finishLevel();
    pass(400ms);
    press(SDLK_ESCAPE);
    pass(400ms);
    waitFor({"willDismissScreen interstitial", "didDismissScreen interstitial",
             "didReceiveAd interstitial"});
    click(180, 300);
    click(180, 300);
    play(5s);
    writePicture();

    begin("10-won");
    finishLevel();
    pass(300ms);
    writePicture();

    begin("11-no-fill");
    app_->ads().setContainer("fault-empty-array");
    waitFor({"didHaveError banner, code 2", "didHaveError banner, code 5"});
    writePicture();

    begin("12-server-down");
    server_.stop();
    app_->ads().setContainer("home-bottom");
    waitFor({"didHaveError banner, code 3"});
    writePicture();
}

void Scenario::begin(const std::string& step) {
    step_ = step;
    heard_.clear();
}

void Scenario::hear(const std::string& event, const std::string& details) {
    heard_.push_back(event + ' ' + details);
    std::printf("%6.3f  %-22s  %-20s  %s\n", std::chrono::duration<double>(now_).count(),
                step_.c_str(), event.c_str(), details.c_str());
    std::fflush(stdout);
}

void Scenario::waitFor(std::vector<std::string> events) {
    waitUntil(
        [&] {
            frame();
            return std::ranges::all_of(
                events, [&](const auto& event) { return std::ranges::count(heard_, event) > 0; });
        },
        step_ + ": " + events.front());
}

void Scenario::waitForOpenedAddress() {
    waitUntil([&] { return std::filesystem::exists(opener_ / "address"); }, "opened address");
    std::ifstream file(opener_ / "address");
    std::string address;
    std::getline(file, address);
    std::printf("%6.3f  %-22s  %-20s  %s\n", std::chrono::duration<double>(now_).count(),
                step_.c_str(), "opened", address.substr(address.find("/landing")).c_str());
    std::filesystem::remove(opener_ / "address");
}

void Scenario::frame() {
    app_->advance(now_);
    // An ad that is not drawn does not count as seen.
    if (app_->ads().screen().isPresenting()) app_->draw();
}

void Scenario::pass(std::chrono::milliseconds time) {
    for (const auto end = now_ + time; now_ < end;) {
        now_ += kFrame;
        frame();
    }
}

void Scenario::click(float x, float y) {
    send(SDL_MOUSEBUTTONDOWN, x, y);
    send(SDL_MOUSEBUTTONUP, x, y);
}

void Scenario::send(Uint32 type, float x, float y) {
    SDL_Event event{};
    event.type = type;
    if (type == SDL_MOUSEMOTION) {
        event.motion.x = static_cast<int>(x);
        event.motion.y = static_cast<int>(y);
    } else {
        event.button.button = SDL_BUTTON_LEFT;
        event.button.x = static_cast<int>(x);
        event.button.y = static_cast<int>(y);
    }
    app_->handle(event);
}

void Scenario::press(SDL_Keycode key) {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.keysym.sym = key;
    app_->handle(event);
}

void Scenario::play(std::chrono::milliseconds longest) {
    const auto& game = app_->game();
    const auto end = now_ + longest;
    while (now_ < end && (game.phase() == Phase::playing || game.phase() == Phase::ready)) {
        if (game.phase() == Phase::ready) press(SDLK_SPACE);
        send(SDL_MOUSEMOTION, bot_.paddleX(game), 500);
        pass(kFrame);
    }
}

void Scenario::finishLevel() {
    play(10min);
    const auto phase = app_->game().phase();
    if (phase != Phase::levelDone && phase != Phase::won)
        throw std::runtime_error(step_ + ": the level was not finished");
}

void Scenario::writePicture() {
    frame();
    app_->draw();
    SDL_RenderFlush(renderer_.get());
    auto* const picture = cairo_image_surface_create_for_data(
        static_cast<unsigned char*>(surface_->pixels), CAIRO_FORMAT_RGB24, surface_->w, surface_->h,
        surface_->pitch);
    const auto path = out_ / (step_ + ".png");
    const auto status = cairo_surface_write_to_png(picture, path.c_str());
    cairo_surface_destroy(picture);
    if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error("cannot write " + path.native());
}
