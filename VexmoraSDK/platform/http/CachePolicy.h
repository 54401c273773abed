// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "VexmoraSDK/platform/http/HttpResponse.h"

namespace VexmoraSDK::platform {

/// What the headers of a response say of using it again, each field's lines combined, empty where
/// there is none. They are read as RFC 9111 tells private caches to. No freshness is guessed, and a
/// field that cannot be read speaks against the response.
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
