// SPDX-License-Identifier: MIT
#pragma once

#include <SDL.h>

#include <cstdint>
#include <optional>

#include "VexmoraSDK/presenting/TapTracker.h"

namespace VexmoraSDK {

/// The coordinates of a renderer whose viewport is the whole of its window.
class RendererSpace {
 public:
    explicit RendererSpace(SDL_Renderer* renderer) : renderer_(renderer) {}

    /// How many units of the renderer one point of its window takes: 1 with a logical size.
    double unitsPerPoint() const;
    /// In points of the window, or of the logical size.
    platform::Size size() const;
    /// Whether an event of that window is one of this renderer; of any, for one without a window.
    bool isOwn(std::uint32_t windowId) const;
    /// Where a mouse or a finger is that an event tells of.
    platform::Point position(const SDL_MouseButtonEvent& event) const;
    platform::Point position(const SDL_MouseMotionEvent& event) const;
    platform::Point position(const SDL_TouchFingerEvent& event) const;

 private:
    platform::Point fromWindow(double x, double y) const;

    SDL_Renderer* const renderer_;
};

/// What a mouse or a finger does, whichever it is.
struct PointerEvent {
    enum class Kind { press, move, release };
    Kind kind;
    /// In the renderer's coordinates.
    platform::Point position;
    /// Of the mouse or of one finger.
    std::int64_t pointer;
};

/// Absent for an event of another kind, of another window, of another button than the left one, or
/// that SDL made up after one of the other kind.
std::optional<PointerEvent> pointerEvent(const SDL_Event& event, const RendererSpace& space);

/// Tells taps from drags, one pointer at a time.
class PointerTaps {
 public:
    /// Follows the pointer from a press on.
    void press(const PointerEvent& event);
    /// Whether the event belongs to the press that is followed.
    bool follows(const PointerEvent& event) const { return pointer_ == event.pointer; }
    /// What follows a press; whether that was the end of a tap.
    bool isTap(const PointerEvent& event, const RendererSpace& space);
    void cancel();

 private:
    std::optional<std::int64_t> pointer_;
    TapTracker tracker_;
};

}  // namespace VexmoraSDK
