// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <memory>

#include "adserver/AdServer.h"

/// A mock ad server in this process. The library's settings lead to it.
class LocalAdServer {
 public:
    /// Starts the server. Make it before the first ad view, because that reads the settings. Throws
    /// std::exception when there is no catalogue, no free port or no place for the settings.
    LocalAdServer();
    ~LocalAdServer();
    LocalAdServer(const LocalAdServer&) = delete;
    LocalAdServer& operator=(const LocalAdServer&) = delete;

    /// Stops the server: every later request fails.
    void stop() { server_.reset(); }

 private:
    std::unique_ptr<VexmoraSDK::AdServer> server_;
    std::filesystem::path resources_;
};
