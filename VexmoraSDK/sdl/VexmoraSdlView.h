// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/presenting/AdSlot.h"
#include "VexmoraSDK/presenting/FillMode.h"
#include "VexmoraSDK/presenting/NativeTexts.h"

struct SDL_FRect;
struct SDL_Renderer;
union SDL_Event;

namespace VexmoraSDK {

/// Shows the banners or native ads of a slot in a game that draws with SDL: as a texture, which is
/// uploaded only when the ad has changed. Destroy it before its slot and its renderer, otherwise at
/// any time, from inside the operations of the slot's delegate too. Main thread.
///
/// Coordinates are those of the renderer, whose viewport is the whole window: units of its logical
/// size, or without one pixels divided by its scale. Without a logical size a point of an ad is a
/// point of the window, so that an output with more pixels shows it sharper and no smaller.
class VEXMORA_EXPORT VexmoraSdlView {
 public:
    VexmoraSdlView(SDL_Renderer* renderer, AdSlot& slot);
    ~VexmoraSdlView();
    VexmoraSdlView(const VexmoraSdlView&) = delete;
    VexmoraSdlView& operator=(const VexmoraSdlView&) = delete;

    /// Draws the ad on show in `place`, or nothing while there is none. Call it once a frame.
    void draw(const SDL_FRect& place);

    /// Handles taps on the ad and events of the window, the app and the textures. Give it every
    /// event. Returns whether the game should ignore the event, because it is a press on the ad or
    /// belongs to one.
    bool handle(const SDL_Event& event);

    /// Default: `fit`.
    FillMode fillMode() const;
    void setFillMode(FillMode mode);
    /// The text colours of native ads.
    void setTextColors(const NativeTextColors& colors);

    /// The part of the ad that is visible when it is drawn, from 0 to 1. Default: 1. Set it to 0
    /// when the game stops drawing the ad, which then takes no presses either, and below 1 where
    /// something covers it.
    double visibleFraction() const;
    void setVisibleFraction(double fraction);

    /// Whether the mouse is on an ad that a click opens. The game may show a hand cursor.
    bool isHovered() const;

 private:
    struct Impl;

    const std::unique_ptr<Impl> impl_;
};

}  // namespace VexmoraSDK
