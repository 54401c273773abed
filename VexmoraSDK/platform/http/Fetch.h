// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <optional>

#include "VexmoraSDK/platform/http/HttpCache.h"
#include "VexmoraSDK/platform/http/HttpResponse.h"
#include "VexmoraSDK/platform/http/UrlSession.h"

namespace VexmoraSDK::platform {

/// One GET, from the call that made its task to its completion. The cache answers it, or a transfer
/// does, whose response the cache then hears of. On one thread at a time.
struct Fetch {
    Fetch(Url address, UrlSession::Completion callback, HttpCache& store,
          const UrlSessionLimits& bounds, TaskPriority urgency);

    /// Looks into the cache. True when a fresh response is stored and no request is needed.
    bool isServedFromCache();

    /// The headers that have the server revalidate a stale stored response; none without one.
    std::vector<std::string> requestHeaders() const;

    /// Makes a transport error the outcome. `code` is libcurl's.
    void fail(int code, const char* description);

    /// Decodes the response, lets the cache know of it and runs the completion.
    void complete();

    const Url url;
    /// Scheme, host and port.
    const std::string origin;
    const TaskPriority priority;
    UrlSession::Completion completion;
    std::atomic<bool> resumed = false;
    /// Whether it has a place of the `TransferQueue`, and how much its body is said to hold there.
    bool hasPlace = false;
    std::size_t heldBytes = 0;

    // The result of the transfer.
    HttpCache::Time requestTime{};
    HttpResponse response;
    std::optional<Error> error;

 private:
    void decodeBody();
    void tellCache(const SharedData& body);

    HttpCache& cache_;
    const UrlSessionLimits& limits_;
    HttpCache::Response cached_;
    bool servedFromCache_ = false;
};

}  // namespace VexmoraSDK::platform
