// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/cairo/HostLoop.h"
#include "VexmoraSDK/presenting/AdSlot.h"

namespace VexmoraSDK {

/// Runs the library's work in the loop of an SDL game. Make it after SDL's events are initialised
/// and before the first slot, destroy it after the last slot, and call `run` once a frame. Main
/// thread.
///
/// A game that sleeps calls `SDL_WaitEventTimeout` with what `run` returned, or with what
/// `AdSlot::wakeAll` says after it has shown or hidden ads since: when something comes in the
/// meantime an event of the type `wakeUpEvent()` ends the wait.
class VEXMORA_EXPORT VexmoraSdlLoop {
 public:
    VexmoraSdlLoop();

    /// Runs the work that waits for the main thread until `budget` is spent, then wakes the slots
    /// that are due. Returns the time until the next call, 0 for at once; absent if only an event
    /// can bring work.
    std::optional<std::chrono::milliseconds> run(
        std::chrono::microseconds budget = std::chrono::microseconds(200)) noexcept;

    /// The type of the event that wakes a sleeping game so that it calls `run`.
    static std::uint32_t wakeUpEvent();

 private:
    platform::HostLoop loop_;
};

}  // namespace VexmoraSDK
