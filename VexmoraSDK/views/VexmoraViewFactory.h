// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/types/VexmoraAdType.h"
#include "VexmoraSDK/types/VexmoraViewType.h"
#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

/// Makes ad views. A returned view has sent its request and reports the outcome to its delegate.
/// The host places the view on the screen. Main thread.
class VEXMORA_EXPORT VexmoraViewFactory {
 public:
    /// Makes a view for ads of one size: "300x250", "728x90", "320x60", "320x100" or "468x60".
    /// Returns null for any other size and reports nothing.
    static std::shared_ptr<VexmoraView> createView(
        const std::string& containerId, std::string_view adSize,
        std::shared_ptr<VexmoraDelegate> delegate) noexcept;

    /// Makes a view of one kind for all ad types that it can show. A value that is no view type
    /// makes a banner view.
    static std::shared_ptr<VexmoraView> createView(
        const std::string& containerId, VexmoraViewType viewType,
        std::shared_ptr<VexmoraDelegate> delegate) noexcept;

    /// Makes a view for ads of one type. For `slideshow`, and for a value that is no ad type, calls
    /// `didHaveError` with an `InvalidAdTypeError` and a view made for that call, and returns null.
    static std::shared_ptr<VexmoraView> createView(
        const std::string& containerId, VexmoraAdType adType,
        std::shared_ptr<VexmoraDelegate> delegate) noexcept;

    /// The same without a delegate.
    static std::shared_ptr<VexmoraView> createView(const std::string& containerId,
                                                   VexmoraAdType adType) noexcept;
};

}  // namespace VexmoraSDK
