#pragma once

#include <QString>
#include <QTemporaryDir>
#include <memory>

#include "adserver/AdServer.h"

/// A mock ad server in this process, and the library set up to ask it.
class LocalAdServer {
 public:
    /// Starts the server. Make it before the first ad view, which reads the settings. Null when
    /// that fails; `error` then says why.
    static std::unique_ptr<LocalAdServer> start(QString& error);

    /// Nobody answers from here on.
    void stop();

 private:
    explicit LocalAdServer(VexmoraSDK::Catalog catalog);

    bool writeSettings() const;

    std::unique_ptr<VexmoraSDK::AdServer> server_;
    QTemporaryDir resources_;
};
