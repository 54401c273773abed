// SPDX-License-Identifier: MIT
#pragma once

#include <SDL.h>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "VexmoraSDK/platform/images/Image.h"
#include "benchmarks/Floor.h"

namespace VexmoraSDK::benchmarks {

/// The floor of a game: the library's codecs, and tasks that run in the game's loop.
class GameFloor {
 public:
    using Ad = Floor<std::shared_ptr<const platform::Image>>::Ad;
    using Done = std::function<void(Ad)>;

    /// `wakeUp` is called on any thread when `run` has something to do.
    explicit GameFloor(std::function<void()> wakeUp);

    /// See `Floor`; `done` runs in `run`.
    void fetch(std::string address, Done done);
    void run();

 private:
    const std::function<void()> wakeUp_;
    std::mutex mutex_;
    std::deque<std::function<void()>> tasks_;
    Floor<std::shared_ptr<const platform::Image>> floor_;
};

/// An ad as a texture, laid out, painted and uploaded by hand, like the SDK's view of that kind.
class GameFloorAd {
 public:
    enum class Kind { banner, native, interstitial };

    GameFloorAd(SDL_Renderer* renderer, Kind kind, const GameFloor::Ad& ad);
    ~GameFloorAd() { SDL_DestroyTexture(texture_); }
    GameFloorAd(const GameFloorAd&) = delete;
    GameFloorAd& operator=(const GameFloorAd&) = delete;

    void draw(SDL_Renderer* renderer) const;

 private:
    int width_ = 0;
    int height_ = 0;
    SDL_Texture* texture_ = nullptr;
};

}  // namespace VexmoraSDK::benchmarks
