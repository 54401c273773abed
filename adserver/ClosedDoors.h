#pragma once

#include <memory>
#include <mutex>
#include <string>

namespace VexmoraSDK {

/// Ports of 127.0.0.1 that a client does not get through. Each is taken when it is first asked for
/// and kept to the end. Any thread.
class ClosedDoors {
 public:
    ClosedDoors();
    ~ClosedDoors();

    /// Never takes up a connection: connecting does not end.
    std::string full();
    /// Takes up connections and says nothing: a handshake does not begin.
    std::string silent();
    /// Speaks TLS, with a certificate that nobody vouches for.
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
