#pragma once

#include <atomic>

namespace VexmoraSDK {

/// While one lives, the name `kName` is not resolved; afterwards it does not exist.
class StalledResolver {
 public:
    static constexpr auto kName = "stalled.invalid";

    StalledResolver() { stalled_ = true; }
    ~StalledResolver() {
        stalled_ = false;
        stalled_.notify_all();
    }

    /// Returns when none lives.
    static void wait() { stalled_.wait(true); }

 private:
    static inline std::atomic<bool> stalled_ = false;
};

}  // namespace VexmoraSDK
