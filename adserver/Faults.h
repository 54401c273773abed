// SPDX-License-Identifier: MIT
#pragma once

#include <boost/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adserver/Delivery.h"

namespace VexmoraSDK {

/// What goes wrong with the responses for one container identifier.
struct Fault {
    /// The container identifier; empty if nothing goes wrong.
    std::string_view container;
    /// Makes the body of the ad response out of one or more good ads.
    std::string (*compose)(const boost::json::array& ads);
    const Delivery* ads;
    const Delivery* picture;

    /// The fault of this container, which must outlive it. If the container's name does not begin
    /// with "fault-", the fault changes nothing; if it does and no fault has that name, there is
    /// none.
    static std::optional<Fault> of(std::string_view container);

    /// All containers that have a fault.
    static std::vector<std::string> containers();

    /// Whether the response for the picture is faulty, so that its address must name the container.
    bool spoilsPicture() const { return picture != &Delivery::good(); }
};

}  // namespace VexmoraSDK
