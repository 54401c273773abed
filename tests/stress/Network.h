#pragma once

#include <memory>
#include <string>

namespace VexmoraSDK {

/// Where the ads of the stress test come from.
class Network {
 public:
    Network();
    ~Network();

    std::string requestUrlFormat() const;

    /// Sees to it that the request for the ads of this container and type, which is made about now,
    /// is answered as the container's name says, and the request for the picture after it. Waits
    /// for the requests, if it is not a server that answers. Any thread but the main thread.
    void serve(const std::string& container, int adType);

 private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace VexmoraSDK
