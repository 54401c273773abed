// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/Object.h"

#include <string>

#include "VexmoraSDK/platform/foundation/Fatal.h"

namespace VexmoraSDK::platform {

void Object::perform(std::string_view selector, Object* argument) {
    const Method answer = method(selector);
    if (!answer) {
        const std::string detail = fatalDetail();
        const FatalContext context(detail);
        fatalError("unrecognized selector '" + std::string(selector) + "' sent to instance of '" +
                   std::string(className()) + "'");
    }
    answer(*this, argument);
}

void Object::setOutlet(std::string_view outlet, const std::shared_ptr<Object>&) {
    fatalError("class '" + std::string(className()) + "' has no outlet '" + std::string(outlet) +
               "'");
}

std::shared_ptr<Object> Object::self() {
    if (auto held = weak_from_this().lock()) return held;
    const std::string detail = fatalDetail();
    const FatalContext context(detail);
    fatalError("an object of class '" + std::string(className()) +
               "' is held by no std::shared_ptr: make it with 'create'");
}

Object::Method Object::method(std::string_view) const {
    return nullptr;
}

}  // namespace VexmoraSDK::platform
