// SPDX-License-Identifier: MIT
#include "VexmoraSDK/views/VexmoraBannerView.h"

#include "VexmoraSDK/ads/AdFactory.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/foundation/NoDestructor.h"
#include "VexmoraSDK/views/AdViewHandler.h"

namespace VexmoraSDK {

using platform::unwrap;

const std::vector<VexmoraAdType>& VexmoraBannerView::allowedAdTypes() {
    static const platform::NoDestructor<std::vector<VexmoraAdType>> types(
        std::vector{VexmoraAdType::banner, VexmoraAdType::mediumBanner, VexmoraAdType::fullBanner});
    return *types;
}

VexmoraBannerView::VexmoraBannerView(platform::Rect frame)
    : InternalAdView(frame, VexmoraViewType::banner, allowedAdTypes(), allowedAdTypes()) {}

VexmoraBannerView::VexmoraBannerView(const platform::Coder& coder)
    : InternalAdView(coder, VexmoraViewType::banner, allowedAdTypes(), allowedAdTypes()) {}

std::shared_ptr<Banner> VexmoraBannerView::ad() const {
    return std::static_pointer_cast<Banner>(InternalAdView::ad());
}

void VexmoraBannerView::containerSetCallback() {
    const auto self = shared<VexmoraBannerView>();
    AdFactory::fetchAndCreateBanner(
        vexmoraDelegate()->getUrl(*this),
        [self](const std::shared_ptr<Banner>& banner) { self->receive(banner); },
        [self](const VexmoraError& error) { self->tell(&VexmoraDelegate::didHaveError, error); });
}

void VexmoraBannerView::draw() {
    const auto drawn = ad();
    render(drawn);
    const auto image = unwrap(ad()).image();
    setFrame({frame().origin, unwrap(image, "picture of container", containerName()).size()});
    tell(&VexmoraDelegate::didReceiveAd);
}

VexmoraBannerView::Method VexmoraBannerView::method(std::string_view selector) const {
    if (selector == Utils::handleTapCallbackSelector) return call<&VexmoraBannerView::handleTap>;
    return InternalAdView::method(selector);
}

}  // namespace VexmoraSDK
