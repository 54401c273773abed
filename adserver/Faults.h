#pragma once

#include <boost/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "adserver/Delivery.h"

namespace VexmoraSDK {

/// What goes wrong for one container identifier.
struct Fault {
    /// The container; empty where nothing goes wrong.
    std::string_view container;
    /// Makes the answer of one or more good ads.
    std::string (*compose)(const boost::json::array& ads);
    const Delivery* ads;
    const Delivery* picture;

    /// The fault that this container stands for; every other container is served well. `container`
    /// must outlive the result.
    static Fault of(std::string_view container);

    /// All containers that stand for one.
    static std::vector<std::string> containers();

    /// Whether the ad's picture has to be asked for under this container's name, too.
    bool spoilsPicture() const { return picture != &Delivery::good(); }
};

}  // namespace VexmoraSDK
