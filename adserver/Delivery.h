#pragma once

#include <httplib.h>

#include <span>
#include <string>
#include <string_view>

#include "adserver/ClosedDoors.h"

namespace VexmoraSDK {

/// A good answer to a request, and the response to send it with, well or badly.
struct Exchange {
    const httplib::Request& request;
    httplib::Response& response;
    ClosedDoors& doors;
    std::string contentType;
    std::string body;
    std::string cacheControl;  ///< Whether clients may keep it.
};

/// How an answer travels. Where the response of an exchange is too polite, the bytes are written to
/// the connection itself.
struct Delivery {
    std::string_view name;
    void (*send)(Exchange& exchange);

    /// As it should be.
    static const Delivery& good();
    /// All others, some of which end well none the less.
    static std::span<const Delivery> bad();
    /// The one of that name; the good one where there is none.
    static const Delivery& named(std::string_view name);
};

}  // namespace VexmoraSDK
