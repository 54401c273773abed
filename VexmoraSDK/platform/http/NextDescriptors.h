// SPDX-License-Identifier: MIT
#pragma once

#include <array>

namespace VexmoraSDK::platform {

/// The two descriptors that the next calls will get. libcurl opens pairs of sockets for itself, to
/// be woken up and while it resolves a name, and cannot be asked to keep them from the programs
/// that the host starts; so it is done here, right behind it. A descriptor that another thread was
/// faster to get is left alone unless it is a local socket.
class NextDescriptors {
 public:
    NextDescriptors();
    void closeOnExec() const;

 private:
    std::array<int, 2> descriptors_{};
};

}  // namespace VexmoraSDK::platform
