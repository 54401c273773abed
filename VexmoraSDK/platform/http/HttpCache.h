// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "VexmoraSDK/platform/foundation/Data.h"
#include "VexmoraSDK/platform/foundation/Url.h"
#include "VexmoraSDK/platform/http/CachePolicy.h"
#include "VexmoraSDK/platform/http/UrlSessionLimits.h"

namespace VexmoraSDK::platform {

/// A stored response of status 200, its body decoded.
struct CachedResponse {
    std::string address;  ///< Without a fragment.
    CachePolicy policy;
    SharedData body;
    CachePolicy::Time responseTime;
    CachePolicy::Time freshUntil;

    /// Whether it may be used without revalidation. It is stale, too, when the clock was set back.
    bool isFresh(CachePolicy::Time now) const { return responseTime <= now && now < freshUntil; }
};

/// Responses that may be used again, in memory; the least recently used one is dropped first. Any
/// thread.
class HttpCache {
 public:
    using Time = CachePolicy::Time;
    using Response = std::shared_ptr<const CachedResponse>;

    /// When a request was sent and when its response had arrived.
    struct Times {
        Time requestTime;
        Time responseTime;
    };

    static Time now() {
        return std::chrono::floor<Time::duration>(std::chrono::system_clock::now());
    }

    explicit HttpCache(const UrlSessionLimits& limits) : limits_(limits) {}

    /// The stored response for the address, fresh or with a validator; null when there is none.
    Response find(const Url& url, Time now);

    /// Stores the response if its policy allows it and is of use, in place of the one before, which
    /// goes in any case. Without memory it is not stored.
    void store(const Url& url, const CachePolicy& policy, const SharedData& body,
               Times times) noexcept;

    /// A 304 with this policy has revalidated the response.
    void revalidated(const Response& response, const CachePolicy& policy, Times times) noexcept;

 private:
    using Responses = std::list<Response>;

    void put(Response response);
    void remove(std::string_view address);

    const UrlSessionLimits& limits_;
    std::mutex mutex_;
    Responses responses_;  // the one that was used last comes first
    std::unordered_map<std::string_view, Responses::iterator> byAddress_;
    std::size_t bytes_ = 0;
};

}  // namespace VexmoraSDK::platform
