// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "VexmoraSDK/platform/foundation/Object.h"

namespace VexmoraSDK::platform {

/// An object that runs an action when it is sent "hear:".
class Listener : public Object {
 public:
    static constexpr std::string_view kClassName = "Listener";
    using Action = std::function<void(Object* argument)>;

    explicit Listener(Action action = {}) : action_(std::move(action)) {}

    std::string_view className() const override { return kClassName; }

 protected:
    Method method(std::string_view selector) const override {
        if (selector == "hear:") {
            return [](Object& self, Object* argument) {
                static_cast<Listener&>(self).action_(argument);
            };
        }
        return Object::method(selector);
    }

 private:
    Action action_;
};

}  // namespace VexmoraSDK::platform
