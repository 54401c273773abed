// SPDX-License-Identifier: MIT
#include "VexmoraSDK/sdl/VexmoraSdlLoop.h"

#include <SDL.h>

namespace VexmoraSDK {
namespace {

void pushWakeUp() {
    SDL_Event event{};
    event.type = VexmoraSdlLoop::wakeUpEvent();
    SDL_PushEvent(&event);
}

}  // namespace

VexmoraSdlLoop::VexmoraSdlLoop() : loop_(pushWakeUp) {
    wakeUpEvent();
}

std::optional<std::chrono::milliseconds> VexmoraSdlLoop::run(
    std::chrono::microseconds budget) noexcept {
    const bool isLeft = loop_.run(budget);
    const auto next = AdSlot::wakeAll();
    return isLeft ? std::chrono::milliseconds(0) : next;
}

std::uint32_t VexmoraSdlLoop::wakeUpEvent() {
    static const std::uint32_t type = SDL_RegisterEvents(1);
    return type;
}

}  // namespace VexmoraSDK
