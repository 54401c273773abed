// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/ui/View.h"
#include "VexmoraSDK/types/VexmoraViewType.h"
#include "VexmoraSDK/views/VexmoraDelegate.h"

namespace VexmoraSDK {

/// The host's interface to an ad view. Main thread only.
class VEXMORA_EXPORT VexmoraView : public platform::View {
 public:
    using View::View;

    /// The raw values of the ad types that the view requests, in the order of the request.
    virtual const std::vector<std::intptr_t>& adTypes() const = 0;
    virtual void setAdTypes(std::vector<std::intptr_t> adTypes) noexcept = 0;

    virtual VexmoraViewType viewType() const = 0;

    /// The placement's name at the ad server; absent until it is set.
    virtual const std::optional<std::string>& containerId() const = 0;
    /// Every assignment starts a request, even of the same value; a request in flight goes on. The
    /// latest ad is drawn when any picture arrives, in front of earlier ads. If its own picture is
    /// still missing then, a banner or interstitial view stops the process and a native one reports
    /// an `ImageRequestError`. To ask again, make another view. An absent value, or one that makes
    /// the URL invalid, is a fatal stop.
    virtual void setContainerId(std::optional<std::string> containerId) noexcept = 0;

    /// The delegate, which the view owns; may be absent. It may be replaced from inside its own
    /// operations.
    virtual std::shared_ptr<VexmoraDelegate> delegate() const = 0;
    virtual void setDelegate(std::shared_ptr<VexmoraDelegate> delegate) noexcept = 0;
};

}  // namespace VexmoraSDK
