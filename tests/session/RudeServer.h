// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "adserver/HttpServer.h"

namespace VexmoraSDK {

/// Sends the same bytes, which need not be HTTP, to every client and closes the connection.
class RudeServer : public HttpServer {
 public:
    explicit RudeServer(const std::string& answer) {
        Get(".*", [answer](const httplib::Request&, httplib::Response&) {
            connection().sendAll(answer);
            connection().close();
        });
        port_ = std::to_string(bind(0));
        serve();
    }

    const std::string& port() const { return port_; }
    std::string address() const { return "http://127.0.0.1:" + port_ + "/"; }

 private:
    std::string port_;
};

}  // namespace VexmoraSDK
