#pragma once

#include <QtCore/QSize>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "VexmoraSDK/VexmoraSDK.h"

namespace VexmoraSDK::benchmarks {

/// One kind of ad, as the SDK is asked for it.
struct AdKind {
    std::string_view name;
    VexmoraViewType viewType;
    VexmoraAdType adType;

    /// What all ads are asked for under: unless told otherwise, one whose pictures may not be kept,
    /// so that whoever is compared fetches them each time.
    inline static std::string container = "fault-picture-no-store";

    static const std::vector<AdKind>& all();
    /// Ends the program when there is none of that name.
    static const AdKind& named(std::string_view name);
    static QSize screenSize() { return {360, 640}; }

    bool isNative() const { return viewType == VexmoraViewType::native; }
    bool isInterstitial() const { return viewType == VexmoraViewType::interstitial; }

    /// A view of the SDK, its request under way.
    std::shared_ptr<VexmoraView> createView(std::shared_ptr<VexmoraDelegate> delegate) const;
    /// What that view asks for.
    std::string address() const;
};

}  // namespace VexmoraSDK::benchmarks
