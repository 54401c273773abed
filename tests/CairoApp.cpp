// SPDX-License-Identifier: MIT
#include <condition_variable>
#include <mutex>

#include "VexmoraSDK/platform/cairo/HostLoop.h"
#include "tests/App.h"

namespace VexmoraSDK {

struct App::Impl {
    void sleep() {
        std::unique_lock lock(mutex);
        // A condition may become true without a block.
        changed.wait_for(lock, std::chrono::milliseconds(10), [this] { return woken; });
        woken = false;
    }

    void wakeUp() {
        const std::lock_guard lock(mutex);
        woken = true;
        changed.notify_one();
    }

    static inline Impl* running = nullptr;

    std::mutex mutex;
    std::condition_variable changed;
    bool woken = false;
    platform::HostLoop loop{[this] { wakeUp(); }};
};

App::App() : impl_(std::make_unique<Impl>()) {
    Impl::running = impl_.get();
}

App::~App() {
    Impl::running = nullptr;
}

void App::runForAMoment() {
    Impl::running->sleep();
    Impl::running->loop.run(std::chrono::milliseconds(4));
}

}  // namespace VexmoraSDK

// fontconfig never frees the fonts that it has loaded.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}

extern "C" const char* __lsan_default_options() {
    return "print_suppressions=0";
}
