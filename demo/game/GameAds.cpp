// SPDX-License-Identifier: MIT
#include "demo/game/GameAds.h"

#include <utility>

using namespace VexmoraSDK;

GameAds::GameAds(SDL_Renderer* renderer, Log log)
    : log_(std::move(log)),
      banner_(delegate("banner")),
      native_(delegate("native")),
      interstitial_(interstitialDelegate()),
      bannerView_(renderer, banner_),
      screen_(renderer, interstitial_) {
    banner_.setRefreshInterval(std::chrono::seconds(30));
}

void GameAds::load() {
    setContainer("home-bottom-2x");
    native_.setPlacement({.containerId = "article-native", .viewType = VexmoraViewType::native});
    interstitial_.setPlacement({.containerId = "between-articles-2x", .adSize = "300x250"});
}

void GameAds::setContainer(const std::string& banner) {
    banner_.setPlacement({.containerId = banner, .adSize = "320x60"});
}

void GameAds::presentInterstitial() {
    if (screen_.present()) log_("willShowScreen", "interstitial");
}

AdSlot::Delegate GameAds::delegate(const std::string& name) {
    AdSlot::Delegate delegate;
    delegate.didReceiveAd = [this, name](VexmoraView&) { log_("didReceiveAd", name); };
    delegate.didHaveError = [this, name](VexmoraView&, const VexmoraError& error) {
        log_("didHaveError", name + ", code " + std::to_string(error.code()));
    };
    delegate.willLeaveApplication = [this, name](VexmoraView&) {
        log_("willLeaveApplication", name);
    };
    return delegate;
}

AdSlot::Delegate GameAds::interstitialDelegate() {
    auto delegate = this->delegate("interstitial");
    delegate.willDismissScreen = [this](VexmoraView&) {
        log_("willDismissScreen", "interstitial");
    };
    delegate.didDismissScreen = [this](VexmoraView&) {
        log_("didDismissScreen", "interstitial");
        interstitial_.reload();
    };
    return delegate;
}
