// SPDX-License-Identifier: MIT
#include "VexmoraSDK/views/VexmoraInterstitialView.h"

#include "VexmoraSDK/ads/AdFactory.h"
#include "VexmoraSDK/platform/TextLayout.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/foundation/NoDestructor.h"
#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/platform/ui/Window.h"
#include "VexmoraSDK/views/AdViewHandler.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"

namespace VexmoraSDK {

using platform::unwrap;

const std::vector<VexmoraAdType>& VexmoraInterstitialView::allowedAdTypes() {
    static const platform::NoDestructor<std::vector<VexmoraAdType>> types(
        std::vector{VexmoraAdType::leaderboard, VexmoraAdType::mediumRectangle});
    return *types;
}

VexmoraInterstitialView::VexmoraInterstitialView(platform::Rect frame)
    : InternalAdView(frame, VexmoraViewType::interstitial, allowedAdTypes(),
                     VexmoraBannerView::allowedAdTypes()) {}

VexmoraInterstitialView::VexmoraInterstitialView(const platform::Coder& coder)
    : InternalAdView(coder, VexmoraViewType::interstitial, allowedAdTypes(),
                     VexmoraBannerView::allowedAdTypes()) {}

void VexmoraInterstitialView::containerSetCallback() {
    const auto self = shared<VexmoraInterstitialView>();
    AdFactory::fetchResponse(
        vexmoraDelegate()->getUrl(*this),
        [self](const platform::Data& body) { self->handleResponse(body); },
        [self](const VexmoraError& error) { self->tell(&VexmoraDelegate::didHaveError, error); });
    // The close button has a title.
    platform::TextLayout::prepare();
}

void VexmoraInterstitialView::handleResponse(const platform::Data& body) {
    const auto records = Utils::parseAdJson(body);
    if (records.empty()) {
        tell(&VexmoraDelegate::didHaveError, VexmoraError(VexmoraErrorCodes::NoFill, std::nullopt));
        return;
    }
    std::vector<std::shared_ptr<Banner>> banners;
    banners.reserve(records.size());
    for (const auto& record : records)
        banners.push_back(AdFactory::createAd<Banner>(record));
    receive(banners.front());
}

void VexmoraInterstitialView::handleCloseTap() {
    // The host may release the view inside its delegate.
    const auto self = shared<VexmoraInterstitialView>();
    tell(&VexmoraDelegate::willDismissScreen);
    const auto shownIn = window();
    if (!shownIn) return;
    const platform::FatalContext context("container", containerName());
    unwrap(shownIn->rootViewController(), "root view controller").dismiss(true, [self] {
        self->tell(&VexmoraDelegate::didDismissScreen);
    });
}

void VexmoraInterstitialView::setOutlet(std::string_view outlet,
                                        const std::shared_ptr<Object>& object) {
    if (outlet != "closeButton") return InternalAdView::setOutlet(outlet, object);
    setCloseButton(platform::forcedConversion<platform::Button>(object));
}

VexmoraInterstitialView::Method VexmoraInterstitialView::method(std::string_view selector) const {
    if (selector == "handleCloseTap:") return call<&VexmoraInterstitialView::handleCloseTap>;
    return InternalAdView::method(selector);
}

}  // namespace VexmoraSDK
