#pragma once

#include <array>
#include <string>
#include <vector>

namespace VexmoraSDK {

enum ViewKind { bannerView, nativeView, interstitialView };

/// What a host hears of one view, letter by letter: "D" when the ad is drawn, else the codes of the
/// errors; nothing when the picture cannot be fetched.
using Outcome = std::string;

/// Where the process would stop, which is not tried.
inline const Outcome kStop = "-";

/// What comes of a container's ads in a view of each kind.
struct Container {
    std::string name;
    std::array<Outcome, 3> outcomes;
};

/// Those of the server's faults, from the tables of a page of documents.
std::vector<Container> outcomesIn(const std::string& page);

}  // namespace VexmoraSDK
