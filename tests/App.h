// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>

#include "VexmoraSDK/platform/MainQueue.h"

namespace VexmoraSDK {

/// The application object of the linked toolkit or fake platform. The thread that makes it is the
/// main thread.
class App {
 public:
    App();
    ~App();

    /// Starts an application that is never destroyed.
    static void startForGood() { forGood_ = new App; }

    /// Runs the main thread's events until `condition` holds; returns false if that takes longer
    /// than `longest`.
    template <class Condition>
    static bool waitFor(Condition condition,
                        std::chrono::seconds longest = std::chrono::seconds(60)) {
        const auto deadline = std::chrono::steady_clock::now() + longest;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > deadline) return false;
            runForAMoment();
        }
        return true;
    }

    /// Runs the blocks that are in the main queue now.
    static void runQueuedBlocks() {
        const auto ran = std::make_shared<bool>(false);
        platform::MainQueue::main()->async([ran] { *ran = true; });
        waitFor([&] { return *ran; });
    }

 private:
    static void runForAMoment();
    static inline App* forGood_ = nullptr;

    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace VexmoraSDK
