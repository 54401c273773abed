// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/cairo/HostLoop.h"
#include "VexmoraSDK/presenting/AdSlot.h"

namespace VexmoraSDK {

/// What an SDL game calls once a frame to have the library do its work, before it makes its first
/// slot until after its last. SDL's events are initialised already. Main thread.
///
/// A game that sleeps calls `SDL_WaitEventTimeout` with what `run` returned, or with what
/// `AdSlot::wakeAll` says after it has shown or hidden ads since: when something comes in the
/// meantime an event of the type `wakeUpEvent()` ends the wait.
class VEXMORA_EXPORT VexmoraSdlLoop {
 public:
    VexmoraSdlLoop();

    /// Runs what waits for the main thread until `budget` is spent, then wakes the slots that are
    /// due. Returns in what time it wants to be called next, 0 for at once; absent when nothing is
    /// waited for but an event.
    std::optional<std::chrono::milliseconds> run(
        std::chrono::microseconds budget = std::chrono::milliseconds(1)) noexcept;

    /// Says nothing to the game but that `run` should be called.
    static std::uint32_t wakeUpEvent();

 private:
    platform::HostLoop loop_;
};

}  // namespace VexmoraSDK
