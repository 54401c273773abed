// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

#include "VexmoraSDK/Export.h"

namespace VexmoraSDK::platform {

/// The main queue of an app with its own loop. The thread that makes the `HostLoop` becomes the
/// main thread. Only one may exist at a time. Main thread.
///
/// The first request for a native ad or an interstitial has the fonts of the device read on a
/// thread of its own. Fontconfig takes no change of its fonts meanwhile: an app adds its own
/// (`FcConfigAppFontAddFile`) before that, or after it has measured a text.
class VEXMORA_EXPORT HostLoop {
 public:
    /// `wakeUp`, if given, is called when there are blocks to run: on any thread when the first
    /// block arrives, and when `run` has left some. It must not throw, wait for the main thread or
    /// use the queue. An SDL_PushEvent or a notified condition is enough.
    explicit HostLoop(std::function<void()> wakeUp = {});
    /// Afterwards no block runs and `wakeUp` is not called.
    ~HostLoop();
    HostLoop(const HostLoop&) = delete;
    HostLoop& operator=(const HostLoop&) = delete;

    /// Runs blocks until none are left or `budget` is spent, at least one if there is any. A
    /// running block is not interrupted. Returns whether blocks are left. A block may call it
    /// again.
    bool run(std::chrono::microseconds budget) noexcept;
};

}  // namespace VexmoraSDK::platform
