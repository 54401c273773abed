// SPDX-License-Identifier: MIT
// A host without a window, on the library's Cairo backend, that shows a banner. It prints a line
// when the banner is painted, and runs until its input ends.

#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <vector>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/platform/cairo/HostLoop.h"
#include "VexmoraSDK/platform/cairo/ViewPainter.h"
#include "VexmoraSDK/platform/foundation/Bundle.h"

namespace {

void paint(VexmoraSDK::VexmoraView& view) {
    constexpr int kWidth = 320;
    constexpr int kHeight = 60;
    std::vector<std::uint32_t> pixels(kWidth * kHeight);
    VexmoraSDK::platform::paintView({pixels.data(), kWidth, kHeight, 4 * kWidth}, 1, view);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    std::mutex mutex;
    std::condition_variable changed;
    bool isWoken = false;
    VexmoraSDK::platform::HostLoop loop([&] {
        const std::lock_guard lock(mutex);
        isWoken = true;
        changed.notify_one();
    });
    VexmoraSDK::platform::Bundle::setLibraryFolder(argv[1]);
    bool isShown = false;
    const auto delegate = std::make_shared<VexmoraSDK::VexmoraDelegate>();
    delegate->didReceiveAd = [&](VexmoraSDK::VexmoraView& view) {
        paint(view);
        isShown = true;
    };
    const auto view = VexmoraSDK::VexmoraViewFactory::createView("home-bottom", "320x60", delegate);
    while (!isShown) {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return isWoken; });
        isWoken = false;
        lock.unlock();
        loop.run(std::chrono::seconds(1));
    }
    std::puts("shown");
    std::fflush(stdout);
    std::getchar();
    return 0;
}
