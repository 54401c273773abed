// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>

namespace VexmoraSDK::platform {

/// The session's limits of time, memory and descriptors.
struct UrlSessionLimits {
    /// The time to resolve the name, connect and shake hands.
    std::chrono::milliseconds connectTimeout = std::chrono::seconds(60);
    /// The time without a byte.
    std::chrono::seconds idleTimeout{60};
    /// The time from the first request to the end of the last response, redirects included.
    std::chrono::milliseconds totalTimeout = std::chrono::minutes(5);
    int maxRedirects = 20;
    /// The headers of one transfer, those of interim responses, redirects and trailers included.
    std::size_t maxHeaderBytes = std::size_t{256} << 10;
    /// The bodies that one transfer receives, those of redirects included; also the decoded body.
    std::size_t maxBodyBytes = std::size_t{32} << 20;
    /// The transfers at once, with those whose completion has not yet run; one origin has at most
    /// half of them. Further ones wait, and their time begins when they start.
    std::size_t maxConcurrentTransfers = 64;
    /// The bodies of all these, apart for each priority: while they hold as much, none starts.
    /// Those of one origin count for at most half of it, and none of that origin starts while they
    /// do.
    std::size_t maxHeldBodyBytes = std::size_t{64} << 20;
    /// A body that grows beyond this while they hold more is too large.
    std::size_t maxContestedBodyBytes = std::size_t{4} << 20;
    /// Those that nobody waits for.
    std::size_t maxIdleConnections = 16;
    /// The cookies of all hosts; those that were set first are dropped.
    std::size_t maxCookies = 1000;
    /// All stored responses together; one of them takes at most an eighth.
    std::size_t maxCacheBytes = std::size_t{4} << 20;
};

}  // namespace VexmoraSDK::platform
