// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

#include "VexmoraSDK/Export.h"

namespace VexmoraSDK::platform {

/// The main queue of an app that owns its loop. The thread that makes it is the main thread, and
/// from then on there is a main queue. One at a time; all of it on the main thread.
///
/// The first one has the fonts of the device read on a thread of its own, so that the first text
/// does not wait for them. Fontconfig takes no change of its fonts meanwhile: an app adds its own
/// (`FcConfigAppFontAddFile`) before it makes the loop, or after it has measured a text.
class VEXMORA_EXPORT HostLoop {
 public:
    /// `wakeUp`, if given, says that there are blocks to run: it is called when the first one
    /// comes, in whatever thread that happens, and when `run` has left some. It must not throw,
    /// wait for the main thread, or use the queue; an SDL_PushEvent or a notified condition is
    /// enough.
    explicit HostLoop(std::function<void()> wakeUp = {});
    /// From now on no block runs. `wakeUp` is not called any more.
    ~HostLoop();
    HostLoop(const HostLoop&) = delete;
    HostLoop& operator=(const HostLoop&) = delete;

    /// Runs blocks until there are none left or `budget` is spent, at least one if there is any.
    /// What a block does is not cut short. Returns whether some are left. A block may call it
    /// again.
    bool run(std::chrono::microseconds budget) noexcept;
};

}  // namespace VexmoraSDK::platform
