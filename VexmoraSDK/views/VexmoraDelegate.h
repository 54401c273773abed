// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/errors/VexmoraError.h"

namespace VexmoraSDK {

class VexmoraView;

/// The host's callbacks for its ad views. Every operation is optional: an empty one is skipped.
/// Each gets its view and may release it; none may throw. Set the members before a view gets the
/// delegate, and do not change them afterwards.
struct VEXMORA_EXPORT VexmoraDelegate {
    /// An ad was fetched and drawn into the view. Main thread.
    std::function<void(VexmoraView& view)> didReceiveAd;
    /// A request or an ad failed; see `VexmoraErrorCodes`. Main thread, except `RequestError`,
    /// which comes on a background thread.
    std::function<void(VexmoraView& view, const VexmoraError& error)> didHaveError;
    /// Never called: the host itself presents the screen.
    std::function<void(VexmoraView& view)> willShowScreen;
    /// The close button of an interstitial was tapped. Main thread.
    std::function<void(VexmoraView& view)> willDismissScreen;
    /// The interstitial has left its screen. Main thread.
    std::function<void(VexmoraView& view)> didDismissScreen;
    /// The ad was tapped and its URL is about to be opened. Main thread.
    std::function<void(VexmoraView& view)> willLeaveApplication;
};

}  // namespace VexmoraSDK
