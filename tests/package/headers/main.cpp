// SPDX-License-Identifier: MIT
#include <iostream>
#include <typeinfo>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/ads/Banner.h"
#include "VexmoraSDK/ads/Native.h"
#include "VexmoraSDK/platform/Application.h"
#include "VexmoraSDK/platform/Font.h"
#include "VexmoraSDK/platform/foundation/NotificationCenter.h"
#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/platform/ui/TextView.h"
#include "VexmoraSDK/presenting/AdSlot.h"
#include "VexmoraSDK/presenting/InterstitialLayout.h"
#include "VexmoraSDK/presenting/NativeTexts.h"
#include "VexmoraSDK/presenting/Presentation.h"
#include "VexmoraSDK/presenting/TapTarget.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"
#include "VexmoraSDK/views/VexmoraNativeView.h"

using namespace VexmoraSDK;
using namespace VexmoraSDK::platform;

// Uses every class of the installed headers, so that linking fails if one is not exported.

void use(auto member) {
    std::cout << (member != nullptr);
}

template <class... Classes>
void useTypes() {
    (std::cout << ... << typeid(Classes).name());
}

int main() {
    // These have only inline members.
    useTypes<AdProtocol, AdImageProtocol, ImageAd, InternalAdView, Notification, View,
             ViewController, VexmoraView, Window>();
    use(&Object::perform);
    use(&VexmoraDelegate::didReceiveAd);

    use(&Banner::create);
    use(&Native::create);
    use(&VexmoraBannerView::create);
    use(&VexmoraInterstitialView::handleCloseTap);
    use(&VexmoraNativeView::sizeThatFits);
    use(&Font::named);
    use(&MainQueue::async);
    use(&Bundle::setLibraryFolder);
    use(&Coder::fromData);
    use(&Error::encode);
    use(&NotificationCenter::post);
    use(&Url::fromString);
    use(&Value::integerValue);
    use<std::shared_ptr<const Image> (*)(const Data&)>(&Image::fromData);
    use(&ImageView::imageRect);
    use(&TextView::contentSize);
    use(&Button::press);
    use(&AdSlot::reload);
    use(&AdPosition::of);
    use(&layOutInterstitial);
    use(&accessibleName);
    use(&takesTap);
    use(&Presentation::begin);
    // HostLoop, VexmoraSdlLoop, VexmoraSdlScreen and VexmoraSdlView are in the libraries for games,
    // which tests/package/games tries.
    use(&Application::openUrl);
    VexmoraViewFactory::createView("home", VexmoraAdType::slideshow);
    std::cout << VexmoraError(VexmoraErrorCodes::NoFill, {}).code()
              << std::hash<VexmoraAdType>()(VexmoraAdType::banner);
}
