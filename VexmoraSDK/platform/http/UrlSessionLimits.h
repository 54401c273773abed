// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>

namespace VexmoraSDK::platform {

/// How much the session may take of the host's time, memory and descriptors.
struct UrlSessionLimits {
    /// To resolve the name, connect and shake hands.
    std::chrono::milliseconds connectTimeout = std::chrono::seconds(60);
    /// Without a byte.
    std::chrono::seconds idleTimeout{60};
    /// From the first request to the end of the last response, redirects included.
    std::chrono::milliseconds totalTimeout = std::chrono::minutes(5);
    int maxRedirects = 20;
    /// Of all that a transfer receives, interim responses, redirects and trailers included.
    std::size_t maxHeaderBytes = std::size_t{256} << 10;
    /// Of all that a transfer receives, bodies of redirects included, and once more of the body
    /// after it was decoded.
    std::size_t maxBodyBytes = std::size_t{32} << 20;
    /// At once, with those whose completion has not yet run. An origin has at most half of them.
    /// Further ones wait, and only when they start does their time begin.
    std::size_t maxConcurrentTransfers = 64;
    /// Of the bodies of all these: where they hold as much, none starts.
    std::size_t maxHeldBodyBytes = std::size_t{64} << 20;
    std::size_t maxIdleConnections = 16;
    /// Of all hosts. The ones that were set first go.
    std::size_t maxCookies = 1000;
    /// Of all stored responses; one of them takes at most an eighth.
    std::size_t maxCacheBytes = std::size_t{4} << 20;
};

}  // namespace VexmoraSDK::platform
