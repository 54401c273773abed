// SPDX-License-Identifier: MIT
#pragma once

#include <SDL.h>

#include <functional>
#include <string>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/presenting/AdSlot.h"
#include "VexmoraSDK/sdl/VexmoraSdlScreen.h"
#include "VexmoraSDK/sdl/VexmoraSdlView.h"

/// The ads of the game: a banner below the field, a native ad on the pause screen, and an
/// interstitial between the levels, which is fetched while a level is played.
class GameAds {
 public:
    /// Receives each event of the ads, and details such as the ad's name.
    using Log = std::function<void(const std::string& event, const std::string& details)>;

    GameAds(SDL_Renderer* renderer, Log log);

    /// Requests all three ads.
    void load();
    void setContainer(const std::string& banner);
    /// Presents the interstitial if it is ready.
    void presentInterstitial();

    VexmoraSDK::AdSlot& banner() { return banner_; }
    VexmoraSDK::AdSlot& native() { return native_; }
    const VexmoraSDK::AdSlot& native() const { return native_; }
    VexmoraSDK::AdSlot& interstitial() { return interstitial_; }
    VexmoraSDK::VexmoraSdlView& bannerView() { return bannerView_; }
    VexmoraSDK::VexmoraSdlScreen& screen() { return screen_; }
    const VexmoraSDK::VexmoraSdlScreen& screen() const { return screen_; }

 private:
    VexmoraSDK::AdSlot::Delegate delegate(const std::string& name);
    VexmoraSDK::AdSlot::Delegate interstitialDelegate();

    const Log log_;
    VexmoraSDK::AdSlot banner_;
    VexmoraSDK::AdSlot native_;
    VexmoraSDK::AdSlot interstitial_;
    VexmoraSDK::VexmoraSdlView bannerView_;
    VexmoraSDK::VexmoraSdlScreen screen_;
};
