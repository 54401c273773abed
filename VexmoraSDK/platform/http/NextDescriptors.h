// SPDX-License-Identifier: MIT
#pragma once

#include <array>

namespace VexmoraSDK::platform {

/// The descriptors that the next calls will get. libcurl opens pairs of sockets for itself, to be
/// woken up and while it resolves a name, and cannot be asked to keep them from the programs that
/// the host starts; so it is done here, right behind it. Other threads may be faster to get some,
/// so more than two are looked at; what is no local socket, or was one before, is left alone.
class NextDescriptors {
 public:
    NextDescriptors();
    void closeOnExec() const;

 private:
    std::array<int, 32> descriptors_;
};

}  // namespace VexmoraSDK::platform
