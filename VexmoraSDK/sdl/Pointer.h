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

    /// The number of the renderer's units in one point of its window: 1 with a logical size.
    double unitsPerPoint() const;
    /// The size of the viewport, in points of the window or of the logical size.
    platform::Size size() const;
    /// Whether events of this window belong to this renderer. A renderer without a window takes the
    /// events of every window.
    bool isOwn(std::uint32_t windowId) const;
    /// The position of the mouse or finger in an event.
    platform::Point position(const SDL_MouseButtonEvent& event) const;
    platform::Point position(const SDL_MouseMotionEvent& event) const;
    platform::Point position(const SDL_TouchFingerEvent& event) const;

 private:
    platform::Point fromWindow(double x, double y) const;

    SDL_Renderer* const renderer_;
};

/// A mouse or touch event in one form.
struct PointerEvent {
    enum class Kind { press, move, release };
    Kind kind;
    /// In the renderer's coordinates.
    platform::Point position;
    /// Identifies the mouse or the finger.
    std::int64_t pointer;
};

/// Absent if the event is no pointer event, belongs to another window, is of a button other than
/// the left one, or was synthesised by SDL from touch or mouse.
std::optional<PointerEvent> pointerEvent(const SDL_Event& event, const RendererSpace& space);

/// Tells taps from drags, one pointer at a time.
class PointerTaps {
 public:
    /// Starts to follow the pointer that was pressed.
    void press(const PointerEvent& event);
    /// Whether the event belongs to the press that is followed.
    bool follows(const PointerEvent& event) const { return pointer_ == event.pointer; }
    /// Handles a move or a release after a press. Returns whether a release ended a tap.
    bool isTap(const PointerEvent& event, const RendererSpace& space);
    void cancel();

 private:
    std::optional<std::int64_t> pointer_;
    TapTracker tracker_;
};

}  // namespace VexmoraSDK
