// SPDX-License-Identifier: MIT
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adserver/Delivery.h"

namespace VexmoraSDK {

/// The fault in the responses for one container identifier.
struct Fault {
    /// The container identifier; empty if nothing goes wrong.
    std::string_view container;
    /// Makes the body of the ad response from one or more good ads.
    std::string (*compose)(const boost::json::array& ads);
    const Delivery* ads;
    const Delivery* picture;

    /// The fault of `container`, which must outlive it. A name that does not begin with "fault-"
    /// has a fault that changes nothing; an unknown name that does has none.
    static std::optional<Fault> of(std::string_view container);

    /// All containers that have a fault.
    static std::vector<std::string> containers();

    /// Whether the response for the picture is faulty, so that its address must name the container.
    bool spoilsPicture() const { return picture != &Delivery::good(); }
};

}  // namespace VexmoraSDK
