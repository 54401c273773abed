#include "VexmoraSDK/views/InternalAdView.h"

#include <new>

#include "VexmoraSDK/platform/foundation/Fatal.h"

namespace VexmoraSDK {

void InternalAdView::setContainerId(std::optional<std::string> containerId) noexcept try {
    containerId_ = std::move(containerId);
    containerSetCallback();
} catch (const std::bad_alloc&) {
    platform::fatalNoMemory();
}

void InternalAdView::setDelegate(std::shared_ptr<VexmoraDelegate> delegate) noexcept {
    delegate_.set(std::move(delegate));
}

void InternalAdView::adReadyCallback() {
    platform::unwrap(platform::MainQueue::main()).async([self = shared<InternalAdView>()] {
        self->draw();
    });
}

InternalAdView::Method InternalAdView::method(std::string_view selector) const {
    if (selector == Utils::adReadyCallbackSelector) {
        return [](Object& self, Object*) { static_cast<InternalAdView&>(self).adReadyCallback(); };
    }
    if (selector == "containerSetCallback") {
        return [](Object& self, Object*) {
            static_cast<InternalAdView&>(self).containerSetCallback();
        };
    }
    return VexmoraView::method(selector);
}

}  // namespace VexmoraSDK
