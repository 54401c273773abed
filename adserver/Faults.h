#pragma once

#include <httplib.h>

#include <boost/json.hpp>
#include <string>
#include <string_view>

namespace VexmoraSDK {

/// A good answer to a request, and the response to send it with, well or badly.
struct Exchange {
    const httplib::Request& request;
    httplib::Response& response;
    std::string contentType;
    std::string body;
};

/// What goes wrong for one container identifier.
struct Fault {
    std::string_view container;
    /// Makes the answer of one or more good ads.
    boost::json::value (*compose)(boost::json::array ads);
    void (*sendAds)(Exchange& exchange);
    void (*sendPicture)(Exchange& exchange);

    /// The fault that this container stands for; every other container is served well.
    static const Fault& of(std::string_view container);

    /// Whether the ad's picture has to be asked for under this container's name, too.
    bool spoilsPicture() const;
    /// Whether the answer goes out compressed to clients that accept it.
    bool compresses() const;
};

}  // namespace VexmoraSDK
