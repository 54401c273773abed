// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Object.h"

namespace VexmoraSDK::platform {

/// An object that presents screens. Hosts implement it; main thread only.
class VEXMORA_EXPORT ViewController : public Object {
 public:
    static constexpr std::string_view kClassName = "ViewController";

    std::string_view className() const override { return kClassName; }

    /// Dismisses the screen that this presents, with an animation when `animated`, then runs
    /// `completion`, once, on the main thread; also when it presents none, and when it is destroyed
    /// meanwhile.
    virtual void dismiss(bool animated, std::function<void()> completion) = 0;
};

/// Shows a view tree on a screen. Main thread only.
class VEXMORA_EXPORT Window : public Object {
 public:
    static constexpr std::string_view kClassName = "Window";

    std::string_view className() const override { return kClassName; }

    /// May be absent.
    const std::shared_ptr<ViewController>& rootViewController() const {
        return rootViewController_;
    }
    void setRootViewController(std::shared_ptr<ViewController> controller) {
        rootViewController_ = std::move(controller);
    }

 private:
    std::shared_ptr<ViewController> rootViewController_;
};

}  // namespace VexmoraSDK::platform
