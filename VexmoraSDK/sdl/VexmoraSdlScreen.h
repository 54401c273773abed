// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"
#include "VexmoraSDK/presenting/AdSlot.h"

struct SDL_Renderer;
union SDL_Event;

namespace VexmoraSDK {

/// Presents the interstitials of a slot over a game that draws with SDL: an ad moves in from below,
/// and out again when it is closed, by its close button, Escape, Back or the button B of a game
/// controller. Destroy it before its slot and its renderer, otherwise at any time, from inside the
/// operations of the slot's delegate too. Main thread.
class VEXMORA_EXPORT VexmoraSdlScreen {
 public:
    /// Tells the slot the size of the screen. Make it before the slot's first `wake`.
    VexmoraSdlScreen(SDL_Renderer* renderer, AdSlot& slot);
    ~VexmoraSdlScreen();
    VexmoraSdlScreen(const VexmoraSdlScreen&) = delete;
    VexmoraSdlScreen& operator=(const VexmoraSdlScreen&) = delete;

    /// Presents the ad on show. Returns false and does nothing if there is no ad, it is no
    /// interstitial, is too old or was presented before, or if another is still presented.
    bool present();
    /// True from the call of `present` until the ad has moved out.
    bool isPresenting() const;
    /// Whether the ad covers the whole window and does not move: the game has nothing to draw.
    bool coversWindow() const;

    /// Draws the presented ad over the game. Call it once a frame with a time that never goes back;
    /// the ad moves by that time and follows the size of the window.
    void draw(std::chrono::milliseconds now);

    /// Give it every event before the game handles it. Returns whether the game should ignore the
    /// event: while an ad is presented, every event of mouse, touch, keyboard and controllers.
    bool handle(const SDL_Event& event);

    /// The depth in points of a notch or a rounded corner at each edge of the window. The close
    /// button stays clear of it.
    void setSafeAreaInsets(platform::EdgeInsets insets);

 private:
    struct Impl;

    const std::unique_ptr<Impl> impl_;
};

}  // namespace VexmoraSDK
