#pragma once

#include <QTemporaryDir>
#include <memory>

#include "adserver/AdServer.h"

/// A mock ad server in this process. The library's settings lead to it.
class LocalAdServer {
 public:
    /// Starts the server. Make it before the first ad view, because that reads the settings. Throws
    /// std::exception when there is no catalogue, no free port or no place for the settings.
    LocalAdServer();

    /// Stops the server: every later request fails.
    void stop() { server_.reset(); }

 private:
    std::unique_ptr<VexmoraSDK::AdServer> server_;
    QTemporaryDir resources_;
};
