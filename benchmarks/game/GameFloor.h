// SPDX-License-Identifier: MIT
#pragma once

#include <SDL.h>

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "VexmoraSDK/platform/images/Image.h"

namespace VexmoraSDK::benchmarks {

/// The least that a game needs to show an ad without the SDK: libcurl on one thread, worker threads
/// that decode pictures, and a function of the main thread for each result. It handles no errors.
class GameFloor {
 public:
    struct Ad {
        std::string title;
        std::string description;
        std::string displayName;
        std::shared_ptr<const platform::Image> picture;
    };
    using Done = std::function<void(Ad)>;

    /// `wakeUp` is called on any thread when `run` has something to do.
    explicit GameFloor(std::function<void()> wakeUp);
    ~GameFloor();

    /// Fetches the ad at `address`, then its picture; `done` runs in `run`. Main thread.
    void fetch(std::string address, Done done);
    void run();

    struct Job;

 private:
    using JobPointer = std::unique_ptr<Job>;

    /// A queue of jobs that wait for a thread.
    struct Jobs {
        std::mutex mutex;
        std::condition_variable changed;
        std::deque<JobPointer> waiting;
        bool stopped = false;

        void add(JobPointer job);
        JobPointer take();
    };

    void request(JobPointer job);
    void transfer();
    void begin(JobPointer job);
    void decode();
    void handOver(JobPointer job);
    void finish(JobPointer job);

    const std::function<void()> wakeUp_;
    void* const multi_;
    std::vector<void*> idleHandles_;
    Jobs requests_;
    Jobs pictures_;
    Jobs results_;
    std::thread io_;
    std::vector<std::thread> workers_;
};

/// An ad as a texture, laid out, painted and uploaded by hand. `kind` as the SDK's views.
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
