// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

namespace VexmoraSDK {

/// While one lives, the resolution of `kName` takes for ever; afterwards the name does not exist.
class StalledResolver {
 public:
    static constexpr auto kName = "stalled.invalid";

    StalledResolver() {
        called_ = false;
        stalled_ = true;
    }
    ~StalledResolver() {
        stalled_ = false;
        stalled_.notify_all();
    }

    /// Waits until the name is being resolved.
    static void waitForCaller() { called_.wait(false); }

    /// Waits until no object of this class lives.
    static void wait() {
        called_ = true;
        called_.notify_all();
        stalled_.wait(true);
    }

 private:
    static inline std::atomic<bool> stalled_ = false;
    static inline std::atomic<bool> called_ = false;
};

}  // namespace VexmoraSDK
