#pragma once

#include <chrono>
#include <cstddef>

namespace VexmoraSDK::platform {

/// How much the transfers may take of the host's time, memory and descriptors.
struct UrlSessionLimits {
    /// To resolve the name, connect and shake hands.
    std::chrono::milliseconds connecting = std::chrono::seconds(60);
    /// Without a byte, or with less than one a second.
    std::chrono::seconds silence{60};
    /// From the start to the end.
    std::chrono::milliseconds total = std::chrono::minutes(5);
    long redirects = 20;
    /// Of all heads that a transfer gets, those of redirections and provisional ones too, in bytes.
    std::size_t heads = std::size_t{256} << 10;
    /// Of the decoded body, in bytes.
    std::size_t body = std::size_t{32} << 20;
    /// At once. Further ones wait for their turn, and only then does their time begin.
    std::size_t transfers = 64;
    /// Of the answers that are kept to be used again, in bytes; each takes at most an eighth.
    std::size_t cache = std::size_t{4} << 20;

    /// Those of the shared session. Tests shrink them before they start a transfer.
    static UrlSessionLimits& shared() {
        static UrlSessionLimits limits;
        return limits;
    }
};

}  // namespace VexmoraSDK::platform
