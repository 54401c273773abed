#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace VexmoraSDK {

/// What comes of an ad in a banner, a native and an interstitial view: the names of the errors that
/// the host hears, "drawn", "nothing", or "stop" where the process ends.
using Outcomes = std::array<std::string_view, 3>;

/// What is to come of a fault of the mock ad server.
struct Promise {
    std::string_view fault;           ///< As in the container "fault-..."
    Outcomes ads;                     ///< Of that container.
    std::optional<Outcomes> picture;  ///< Of "fault-picture-...", where there is one.
    bool isLate;                      ///< Whether it comes about by a limit of time.
};

/// Of every fault but those of sheer size.
std::span<const Promise> promises();

}  // namespace VexmoraSDK
