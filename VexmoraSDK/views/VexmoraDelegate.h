// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/errors/VexmoraError.h"

namespace VexmoraSDK {

class VexmoraView;

/// What a host wants to hear of its ad views. Every operation is optional: an empty one is skipped.
/// Each gets the view that it is about, and may release that view; none may throw. Set the members
/// before a view is given the delegate and leave them alone from then on.
struct VEXMORA_EXPORT VexmoraDelegate {
    /// An ad was fetched and drawn into the view. Main thread.
    std::function<void(VexmoraView& view)> didReceiveAd;
    /// Something failed; see `VexmoraErrorCodes`. Main thread, but for `RequestError`, which comes
    /// on a background thread.
    std::function<void(VexmoraView& view, const VexmoraError& error)> didHaveError;
    /// Never called: the host, which shows the screen, knows when.
    std::function<void(VexmoraView& view)> willShowScreen;
    /// The close button of an interstitial was tapped. Main thread.
    std::function<void(VexmoraView& view)> willDismissScreen;
    /// The screen of an interstitial has gone. Main thread.
    std::function<void(VexmoraView& view)> didDismissScreen;
    /// The ad was tapped and its address is about to be opened. Main thread.
    std::function<void(VexmoraView& view)> willLeaveApplication;
};

}  // namespace VexmoraSDK
