// SPDX-License-Identifier: MIT
#pragma once

#include <httplib.h>

#include <span>
#include <string>
#include <string_view>

#include "adserver/UnreachablePorts.h"

namespace VexmoraSDK {

/// A request, the contents of a good response, and the response to fill.
struct Exchange {
    const httplib::Request& request;
    httplib::Response& response;
    UnreachablePorts& ports;
    std::string contentType;
    std::string body;
    std::string cacheControl;  ///< The value of "Cache-Control".
};

/// A way to deliver a response, well or badly. Bytes that httplib would not send are written to the
/// connection directly.
struct Delivery {
    std::string_view name;
    void (*send)(Exchange& exchange);

    /// Delivers the response as it should be.
    static const Delivery& good();
    /// The faulty deliveries. Some of them still deliver the whole response.
    static std::span<const Delivery> bad();
    /// The faulty delivery of that name, or nullptr.
    static const Delivery* named(std::string_view name);
};

}  // namespace VexmoraSDK
