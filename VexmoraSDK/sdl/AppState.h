// SPDX-License-Identifier: MIT
#pragma once

#include <SDL.h>

#include <optional>

#include "VexmoraSDK/sdl/Pointer.h"

namespace VexmoraSDK {

/// Whether the app is visible after `event`; absent if the event does not change that. A desktop
/// window is visible unless it is minimised or hidden.
inline std::optional<bool> appState(const SDL_Event& event, const RendererSpace& space) {
    switch (event.type) {
        case SDL_APP_WILLENTERBACKGROUND: return false;
        case SDL_APP_DIDENTERFOREGROUND: return true;
        case SDL_WINDOWEVENT: break;
        default: return std::nullopt;
    }
    if (!space.isOwn(event.window.windowID)) return std::nullopt;
    switch (event.window.event) {
        case SDL_WINDOWEVENT_MINIMIZED:
        case SDL_WINDOWEVENT_HIDDEN: return false;
        case SDL_WINDOWEVENT_RESTORED:
        case SDL_WINDOWEVENT_SHOWN: return true;
        default: return std::nullopt;
    }
}

}  // namespace VexmoraSDK
