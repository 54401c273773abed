// SPDX-License-Identifier: MIT
#include "VexmoraSDK/views/InternalAdView.h"

#include "VexmoraSDK/ads/ImageAd.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/views/AdViewHandler.h"

namespace VexmoraSDK {

using platform::unwrap;

std::shared_ptr<AdViewHandler> InternalAdView::makeHandler() {
    return std::make_shared<AdViewHandler>();
}

void InternalAdView::setContainerId(std::optional<std::string> containerId) noexcept {
    containerId_ = std::move(containerId);
    containerSetCallback();
}

void InternalAdView::adReadyCallback() {
    unwrap(platform::MainQueue::main(), "application object")
        .async([self = shared<InternalAdView>()] { self->draw(); });
}

void InternalAdView::receive(const std::shared_ptr<AdProtocol>& ad) {
    store(ad);
    vexmoraDelegate_->addObserver(*this, ad);
    vexmoraDelegate_->addTapHandler(*this);
}

void InternalAdView::draw() {
    // Holds the ad: during the calls the host may give the view another one.
    const auto drawn = ad_;
    render(drawn);
    tell(&VexmoraDelegate::didReceiveAd);
}

void InternalAdView::render(const std::shared_ptr<AdProtocol>& ad) {
    const platform::FatalContext context("container", containerName());
    unwrap(ad, "ad").render(*this);
}

void InternalAdView::open(const std::shared_ptr<ImageAd>& ad) {
    // Copies the URL: during the call the host may give the view another ad.
    const platform::Url clickUrl = unwrap(ad, "ad of container", containerName()).clickUrl();
    vexmoraDelegate_->handleTap(*this, clickUrl);
}

InternalAdView::Method InternalAdView::method(std::string_view selector) const {
    if (selector == Utils::adReadyCallbackSelector) return call<&InternalAdView::adReadyCallback>;
    if (selector == "containerSetCallback") return call<&InternalAdView::containerSetCallback>;
    return VexmoraView::method(selector);
}

}  // namespace VexmoraSDK
