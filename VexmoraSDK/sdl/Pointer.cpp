// SPDX-License-Identifier: MIT
#include "VexmoraSDK/sdl/Pointer.h"

#include <limits>

namespace VexmoraSDK {
namespace {

/// A press that moves this many points is a drag.
constexpr double kDragDistance = 10;

// The pointer number of the mouse. SDL never gives it to a finger.
constexpr std::int64_t kMouse = std::numeric_limits<std::int64_t>::min();

bool hasLogicalSize(SDL_Renderer* renderer) {
    int width = 0;
    int height = 0;
    SDL_RenderGetLogicalSize(renderer, &width, &height);
    return width > 0 && height > 0;
}

struct Output {
    double width = 0;
    double height = 0;
    float scaleX = 1;
    float scaleY = 1;
};

/// The size of the renderer's output in pixels, and the pixels in one unit of the renderer.
Output outputOf(SDL_Renderer* renderer) {
    int width = 0;
    int height = 0;
    Output output;
    SDL_GetRendererOutputSize(renderer, &width, &height);
    SDL_RenderGetScale(renderer, &output.scaleX, &output.scaleY);
    output.width = width;
    output.height = height;
    return output;
}

/// The window's size in points. Without a window, the size of the output.
platform::Size windowSize(SDL_Renderer* renderer) {
    const Output output = outputOf(renderer);
    SDL_Window* const window = SDL_RenderGetWindow(renderer);
    if (!window) return {output.width / output.scaleX, output.height / output.scaleY};
    int width = 0;
    int height = 0;
    SDL_GetWindowSize(window, &width, &height);
    return {static_cast<double>(width), static_cast<double>(height)};
}

std::optional<PointerEvent> mouseButton(const SDL_MouseButtonEvent& event, PointerEvent::Kind kind,
                                        const RendererSpace& space) {
    if (event.which == SDL_TOUCH_MOUSEID || event.button != SDL_BUTTON_LEFT) return std::nullopt;
    if (!space.isOwn(event.windowID)) return std::nullopt;
    return PointerEvent{kind, space.position(event), kMouse};
}

std::optional<PointerEvent> finger(const SDL_TouchFingerEvent& event, PointerEvent::Kind kind,
                                   const RendererSpace& space) {
    if (event.touchId == SDL_MOUSE_TOUCHID || !space.isOwn(event.windowID)) return std::nullopt;
    return PointerEvent{kind, space.position(event), event.fingerId};
}

}  // namespace

double RendererSpace::unitsPerPoint() const {
    if (hasLogicalSize(renderer_)) return 1;
    const Output output = outputOf(renderer_);
    const double points = windowSize(renderer_).width;
    return points > 0 ? output.width / output.scaleX / points : 1;
}

platform::Size RendererSpace::size() const {
    int width = 0;
    int height = 0;
    SDL_RenderGetLogicalSize(renderer_, &width, &height);
    if (width > 0 && height > 0) return {static_cast<double>(width), static_cast<double>(height)};
    return windowSize(renderer_);
}

bool RendererSpace::isOwn(std::uint32_t windowId) const {
    SDL_Window* const window = SDL_RenderGetWindow(renderer_);
    return !window || SDL_GetWindowID(window) == windowId;
}

// SDL has already converted mouse positions to the logical size.
platform::Point RendererSpace::fromWindow(double x, double y) const {
    const double units = unitsPerPoint();
    return {x * units, y * units};
}

platform::Point RendererSpace::position(const SDL_MouseButtonEvent& event) const {
    return fromWindow(event.x, event.y);
}

platform::Point RendererSpace::position(const SDL_MouseMotionEvent& event) const {
    return fromWindow(event.x, event.y);
}

// Touch positions run from 0 to 1.
platform::Point RendererSpace::position(const SDL_TouchFingerEvent& event) const {
    const auto [width, height] = size();
    return fromWindow(event.x * width, event.y * height);
}

std::optional<PointerEvent> pointerEvent(const SDL_Event& event, const RendererSpace& space) {
    using Kind = PointerEvent::Kind;
    switch (event.type) {
        case SDL_MOUSEBUTTONDOWN: return mouseButton(event.button, Kind::press, space);
        case SDL_MOUSEBUTTONUP: return mouseButton(event.button, Kind::release, space);
        case SDL_MOUSEMOTION:
            if (event.motion.which == SDL_TOUCH_MOUSEID || !space.isOwn(event.motion.windowID))
                return std::nullopt;
            return PointerEvent{Kind::move, space.position(event.motion), kMouse};
        case SDL_FINGERDOWN: return finger(event.tfinger, Kind::press, space);
        case SDL_FINGERMOTION: return finger(event.tfinger, Kind::move, space);
        case SDL_FINGERUP: return finger(event.tfinger, Kind::release, space);
        default: return std::nullopt;
    }
}

void PointerTaps::press(const PointerEvent& event) {
    pointer_ = event.pointer;
    tracker_.press(event.position);
}

bool PointerTaps::isTap(const PointerEvent& event, const RendererSpace& space) {
    if (!follows(event)) return false;
    tracker_.move(event.position, kDragDistance * space.unitsPerPoint());
    if (event.kind != PointerEvent::Kind::release) return false;
    pointer_.reset();
    return tracker_.release();
}

void PointerTaps::cancel() {
    pointer_.reset();
    tracker_.cancel();
}

}  // namespace VexmoraSDK
