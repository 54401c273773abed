// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "VexmoraSDK/platform/http/HttpResponse.h"

namespace VexmoraSDK::platform {

/// The fields of a response that decide about caching, each with its lines combined and empty if
/// absent. They are interpreted as by a private cache of RFC 9111, without heuristic freshness. A
/// field that cannot be parsed prevents reuse.
struct CachePolicy {
    using Time = std::chrono::sys_seconds;

    static CachePolicy of(const HttpHeaders& headers);

    std::string cacheControl{};
    std::string vary{};
    std::string date{};
    std::string age{};
    std::string expires{};
    std::string etag{};
    std::string lastModified{};
    bool setsCookie = false;

    /// Whether the response may be stored at all. Requests differ in nothing but their cookies, so
    /// a response that may vary with these is not stored, nor is one that sets any.
    bool isStorable() const;

    /// When the response stops to be fresh; not after `responseTime` when it never is.
    Time freshUntil(Time requestTime, Time responseTime) const;

    /// The request headers of a revalidation; none when the response has no validator.
    std::vector<std::string> conditionalHeaders() const;

    /// Takes over the fields of a 304 that has revalidated the response.
    void update(const CachePolicy& newer);

    /// The size of all the texts.
    std::size_t bytes() const;
};

}  // namespace VexmoraSDK::platform
