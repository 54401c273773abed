#include "VexmoraSDK/views/VexmoraBannerView.h"

#include "VexmoraSDK/platform/foundation/NoDestructor.h"

namespace VexmoraSDK {

using platform::unwrap;

const std::vector<VexmoraAdType>& VexmoraBannerView::allowedAdTypes() {
    static const platform::NoDestructor<std::vector<VexmoraAdType>> types(
        std::vector{VexmoraAdType::banner, VexmoraAdType::mediumBanner, VexmoraAdType::fullBanner});
    return *types;
}

std::shared_ptr<VexmoraBannerView> VexmoraBannerView::create(platform::Rect frame) {
    return platform::makeSharedOnMain<VexmoraBannerView>(frame);
}

VexmoraBannerView::VexmoraBannerView(platform::Rect frame)
    : FetchedAdView(frame, VexmoraViewType::banner, allowedAdTypes(), allowedAdTypes()) {}

VexmoraBannerView::VexmoraBannerView(const platform::Coder& coder)
    : FetchedAdView(coder, VexmoraViewType::banner, allowedAdTypes(), allowedAdTypes()) {}

void VexmoraBannerView::draw() {
    const auto drawn = ad();
    unwrap(drawn).render(*this);
    const auto image = unwrap(ad()).image();
    setFrame({frame().origin, unwrap(image).size()});
    tell(&VexmoraDelegate::didReceiveAd);
}

}  // namespace VexmoraSDK
