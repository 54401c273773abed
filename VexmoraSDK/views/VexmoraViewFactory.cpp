// SPDX-License-Identifier: MIT
#include "VexmoraSDK/views/VexmoraViewFactory.h"

#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/foundation/NoDestructor.h"
#include "VexmoraSDK/platform/ui/Nib.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"
#include "VexmoraSDK/views/VexmoraNativeView.h"

namespace VexmoraSDK {
namespace {

using Delegate = std::shared_ptr<VexmoraDelegate>;

template <class View>
std::shared_ptr<platform::View> fromCoder(const platform::Coder& coder) {
    return platform::makeSharedOnMain<View>(coder);
}

/// The name of a class's interface file: the class name without its module.
std::string interfaceFileFor(std::string_view className) {
    const auto dot = className.rfind('.');
    const auto name = dot == className.npos ? className : className.substr(dot + 1);
    return std::string(name.empty() ? "VexmoraInterstitialView" : name);
}

template <class View>
std::shared_ptr<View> loadView() {
    const auto interfaceFile = interfaceFileFor(View::kClassName);
    static const platform::NoDestructor<platform::Nib> nib(interfaceFile,
                                                           platform::Bundle::library());
    static const platform::NoDestructor<platform::Nib::Creators> creators(platform::Nib::Creators{
        {"VexmoraBannerView", fromCoder<VexmoraBannerView>},
        {"VexmoraNativeView", fromCoder<VexmoraNativeView>},
        {"VexmoraInterstitialView", fromCoder<VexmoraInterstitialView>},
    });
    const auto views = nib->instantiate(*creators);
    const platform::FatalContext context("interface file", interfaceFile);
    if (views.empty()) platform::fatalNil();
    return platform::forcedConversion<View>(views.front());
}

std::shared_ptr<VexmoraView> withRequest(std::shared_ptr<VexmoraView> view,
                                         const std::string& containerId, Delegate&& delegate,
                                         const std::vector<VexmoraAdType>& adTypes) {
    if (delegate) view->setDelegate(std::move(delegate));
    view->setAdTypes(rawValues(adTypes));
    // This starts the request, which needs all of the above.
    view->setContainerId(containerId);
    return view;
}

template <class View>
std::shared_ptr<VexmoraView> makeView(
    const std::string& containerId, Delegate&& delegate,
    const std::vector<VexmoraAdType>& adTypes = View::allowedAdTypes()) {
    return withRequest(loadView<View>(), containerId, std::move(delegate), adTypes);
}

}  // namespace

std::shared_ptr<VexmoraView> VexmoraViewFactory::createView(const std::string& containerId,
                                                            std::string_view adSize,
                                                            Delegate delegate) noexcept {
    const auto adTypes = adTypesBySize().find(adSize);
    if (adTypes == adTypesBySize().end() || adTypes->second.empty()) return nullptr;
    const auto viewType = adViewBySize().find(adSize);
    if (viewType == adViewBySize().end()) return nullptr;

    switch (viewType->second) {
        case VexmoraViewType::interstitial:
            return makeView<VexmoraInterstitialView>(containerId, std::move(delegate),
                                                     adTypes->second);
        case VexmoraViewType::banner:
            return makeView<VexmoraBannerView>(containerId, std::move(delegate), adTypes->second);
        default: return nullptr;
    }
}

std::shared_ptr<VexmoraView> VexmoraViewFactory::createView(const std::string& containerId,
                                                            VexmoraViewType viewType,
                                                            Delegate delegate) noexcept {
    switch (viewType) {
        case VexmoraViewType::interstitial:
            return makeView<VexmoraInterstitialView>(containerId, std::move(delegate));
        case VexmoraViewType::native:
            return makeView<VexmoraNativeView>(containerId, std::move(delegate));
        default: return makeView<VexmoraBannerView>(containerId, std::move(delegate));
    }
}

std::shared_ptr<VexmoraView> VexmoraViewFactory::createView(const std::string& containerId,
                                                            VexmoraAdType adType,
                                                            Delegate delegate) noexcept {
    switch (adType) {
        case VexmoraAdType::native:
            return makeView<VexmoraNativeView>(containerId, std::move(delegate), {adType});
        case VexmoraAdType::mediumRectangle:
        case VexmoraAdType::leaderboard:
            return makeView<VexmoraInterstitialView>(containerId, std::move(delegate), {adType});
        case VexmoraAdType::banner:
        case VexmoraAdType::mediumBanner:
        case VexmoraAdType::fullBanner:
            return makeView<VexmoraBannerView>(containerId, std::move(delegate), {adType});
        default: break;
    }
    if (delegate && delegate->didHaveError) {
        delegate->didHaveError(*VexmoraBannerView::create(),
                               VexmoraError(VexmoraErrorCodes::InvalidAdTypeError, std::nullopt));
    }
    return nullptr;
}

std::shared_ptr<VexmoraView> VexmoraViewFactory::createView(const std::string& containerId,
                                                            VexmoraAdType adType) noexcept {
    return createView(containerId, adType, nullptr);
}

}  // namespace VexmoraSDK
