// SPDX-License-Identifier: MIT
#pragma once

#include <array>

namespace VexmoraSDK::platform {

/// Keeps libcurl's pairs of sockets, by which it is woken up and resolves names, from the programs
/// that the host starts; libcurl has no option for that. It remembers which descriptors libcurl
/// will get next, and sets close-on-exec afterwards. More than two are looked at, because other
/// threads may take some; a descriptor that is no local socket, or was one before, is left alone.
class NextDescriptors {
 public:
    /// Made right before libcurl opens a pair.
    NextDescriptors();
    /// Called right after it.
    void closeOnExec() const;

 private:
    std::array<int, 32> descriptors_;
};

}  // namespace VexmoraSDK::platform
