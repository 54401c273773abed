// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Object.h"

namespace VexmoraSDK::platform {

/// Sends a selector to a target, with itself as the argument, when its view is tapped. Target and
/// delegate are held weakly; a target that is gone is sent nothing.
class VEXMORA_EXPORT TapGestureRecognizer : public Object {
 public:
    static constexpr std::string_view kClassName = "TapGestureRecognizer";

    TapGestureRecognizer(std::weak_ptr<Object> target, std::string action)
        : target_(std::move(target)), action_(std::move(action)) {}

    std::string_view className() const override { return kClassName; }

    /// The delegate is only kept; no operation of it is called.
    void setDelegate(std::weak_ptr<Object> delegate) { delegate_ = std::move(delegate); }
    std::shared_ptr<Object> delegate() const { return delegate_.lock(); }

    /// Sends the action. The view tree calls it when its view is tapped.
    void fire() {
        if (auto target = target_.lock()) target->perform(action_, this);
    }

 private:
    std::weak_ptr<Object> target_;
    std::string action_;
    std::weak_ptr<Object> delegate_;
};

}  // namespace VexmoraSDK::platform
