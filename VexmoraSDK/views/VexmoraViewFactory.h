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

/// Makes ad views. A view that is returned has its request under way; what becomes of it, the
/// delegate hears. The host places the view on the screen. Main thread.
class VEXMORA_EXPORT VexmoraViewFactory {
 public:
    /// A view for ads of one size, such as "320x60"; absent, and nothing reported, for a size that
    /// is none of "300x250", "728x90", "320x60", "320x100" and "468x60".
    static std::shared_ptr<VexmoraView> createView(
        const std::string& containerId, std::string_view adSize,
        std::shared_ptr<VexmoraDelegate> delegate) noexcept;

    /// A view of one kind, for every ad type that it can show; a banner view for a value that is no
    /// view type.
    static std::shared_ptr<VexmoraView> createView(
        const std::string& containerId, VexmoraViewType viewType,
        std::shared_ptr<VexmoraDelegate> delegate) noexcept;

    /// A view for ads of one type. Absent for `slideshow` and for a value that is no ad type, after
    /// `didHaveError` was called with an `InvalidAdTypeError` and a view made for that call.
    static std::shared_ptr<VexmoraView> createView(
        const std::string& containerId, VexmoraAdType adType,
        std::shared_ptr<VexmoraDelegate> delegate) noexcept;

    /// The same without a delegate.
    static std::shared_ptr<VexmoraView> createView(const std::string& containerId,
                                                   VexmoraAdType adType) noexcept;
};

}  // namespace VexmoraSDK
