// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <mutex>
#include <string>

namespace VexmoraSDK {

/// Ports of 127.0.0.1 on which no client gets as far as a request. Each port is opened when it is
/// first asked for, and stays open as long as this object lives. Its members may be called from any
/// thread and return "127.0.0.1:PORT".
class UnreachablePorts {
 public:
    UnreachablePorts();
    ~UnreachablePorts();

    /// Accepts no connection: connecting never ends.
    std::string full();
    /// Accepts connections and sends nothing: a TLS handshake never ends.
    std::string silent();
    /// Speaks TLS with a self-signed certificate.
    std::string selfSigned();

 private:
    class Listener;
    class TlsServer;

    std::mutex mutex_;
    std::unique_ptr<Listener> full_;
    std::unique_ptr<Listener> silent_;
    std::unique_ptr<TlsServer> selfSigned_;
};

}  // namespace VexmoraSDK
