#pragma once

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/ads/AdFactory.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/views/AdView.h"

namespace VexmoraSDK {

/// An ad view whose ad the factory fetches, with `fetch`, and whose tap opens the ad's address.
template <class AdType, auto fetch>
class VEXMORA_EXPORT FetchedAdView : public AdView<AdType> {
 public:
    void containerSetCallback() override {
        const auto self = this->template shared<FetchedAdView>();
        fetch(
            this->vexmoraDelegate()->getUrl(*this),
            [self](std::shared_ptr<AdType> ad) { self->receive(std::move(ad)); },
            [self](const VexmoraError& error) {
                self->tell(&VexmoraDelegate::didHaveError, error);
            });
    }

    /// The ad was tapped: tells the host and opens the ad's address. No ad is a fatal stop.
    void handleTap() {
        // A copy: the host may give the view another ad while it hears of the tap.
        const platform::Url clickUrl = platform::unwrap(this->ad()).clickUrl();
        this->vexmoraDelegate()->handleTap(*this, clickUrl);
    }

 protected:
    using AdView<AdType>::AdView;

    platform::Object::Method method(std::string_view selector) const override {
        if (selector == Utils::handleTapCallbackSelector) {
            return [](platform::Object& self, platform::Object*) {
                static_cast<FetchedAdView&>(self).handleTap();
            };
        }
        return AdView<AdType>::method(selector);
    }
};

}  // namespace VexmoraSDK
