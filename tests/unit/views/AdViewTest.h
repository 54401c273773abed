// SPDX-License-Identifier: MIT
#pragma once

#include "VexmoraSDK/views/VexmoraView.h"
#include "tests/unit/SdkTest.h"

namespace VexmoraSDK {

/// A host that logs every operation of its delegate.
class AdViewTest : public SdkTest {
 protected:
    /// What the host does in each operation, besides logging it.
    using Reaction = std::function<void()>;

    std::shared_ptr<VexmoraDelegate> host(const Reaction& reaction = [] {}) {
        const auto on = [this, reaction](const char* operation) {
            return [this, reaction, operation](VexmoraView&) {
                hear(operation);
                reaction();
            };
        };
        return std::make_shared<VexmoraDelegate>(VexmoraDelegate{
            .didReceiveAd = on("didReceiveAd"),
            .didHaveError =
                [this, reaction](VexmoraView&, const VexmoraError& error) {
                    const auto& info = error.userInfo();
                    hear(
                        "didHaveError " + std::to_string(error.code()) +
                        (info ? ": " + *info->at("NSLocalizedDescription").as<std::string>() : ""));
                    reaction();
                },
            .willShowScreen = on("willShowScreen"),
            .willDismissScreen = on("willDismissScreen"),
            .didDismissScreen = on("didDismissScreen"),
            .willLeaveApplication = on("willLeaveApplication"),
        });
    }

    /// The URL of a view's ad request.
    static std::string adUrl(const std::string& containerId, const std::string& types) {
        return "https://ads.test/?container=" + containerId + "&types=" + types;
    }
};

}  // namespace VexmoraSDK
