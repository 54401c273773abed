// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QSize>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "VexmoraSDK/VexmoraSDK.h"

namespace VexmoraSDK::benchmarks {

/// A kind of ad and the parameters to request it.
struct AdKind {
    std::string_view name;
    VexmoraViewType viewType;
    VexmoraAdType adType;

    /// The container identifier of all requests. The pictures of the default one may not be cached,
    /// so that everything that is compared downloads them each time.
    inline static std::string container = "fault-picture-no-store";

    static const std::vector<AdKind>& all();
    /// Ends the program if there is no kind of that name.
    static const AdKind& named(std::string_view name);
    static QSize screenSize() { return {360, 640}; }

    bool isNative() const { return viewType == VexmoraViewType::native; }
    bool isInterstitial() const { return viewType == VexmoraViewType::interstitial; }

    /// Creates a view of the SDK, which starts its request.
    std::shared_ptr<VexmoraView> createView(std::shared_ptr<VexmoraDelegate> delegate) const;
    /// The URL that such a view requests.
    std::string address() const;
};

}  // namespace VexmoraSDK::benchmarks
