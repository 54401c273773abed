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
/// uploaded only when the ad has changed. It goes before its slot and its renderer do, at any time
/// else, from inside the operations of the slot's delegate too. Main thread.
///
/// Coordinates are those of the renderer, with the whole window as its viewport: of its logical
/// size, if it has one, else pixels divided by its scale. Without a logical size a point of an ad
/// is one of the window, so that ads are sharp and no smaller on outputs with more pixels.
class VEXMORA_EXPORT VexmoraSdlView {
 public:
    VexmoraSdlView(SDL_Renderer* renderer, AdSlot& slot);
    ~VexmoraSdlView();
    VexmoraSdlView(const VexmoraSdlView&) = delete;
    VexmoraSdlView& operator=(const VexmoraSdlView&) = delete;

    /// Draws the ad on show in `place`, once a frame; nothing while there is none.
    void draw(const SDL_FRect& place);

    /// Takes taps on the ad, by mouse or touch, and hears of what happens to the window, the app
    /// and the textures: give it every event. Whether the event was a press on the ad, or belongs
    /// to one: the game should not take it too.
    bool handle(const SDL_Event& event);

    /// `fit` at first.
    FillMode fillMode() const;
    void setFillMode(FillMode mode);
    /// Of the texts of native ads.
    void setTextColors(const NativeTextColors& colors);

    /// How much of the ad is seen when it is drawn, 1 at first. Say 0 where it is no longer drawn,
    /// so that it takes no presses either, and less than 1 where something covers it.
    double visibleFraction() const;
    void setVisibleFraction(double fraction);

    /// Whether the mouse is on an ad that a click opens: show a hand then.
    bool isHovered() const;

 private:
    struct Impl;

    const std::unique_ptr<Impl> impl_;
};

}  // namespace VexmoraSDK
