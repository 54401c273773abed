// SPDX-License-Identifier: MIT
#pragma once

#include <curl/curl.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

namespace VexmoraSDK::platform {

/// The cookies of all transfers, in memory. libcurl bounds the cookies that one response may set,
/// and this class bounds the number of all. On one thread at a time.
class CookieJar {
 public:
    /// The handle by which transfers share cookies; null without memory, and each has its own then.
    CURLSH* share();

    /// Drops the cookies that were set first where there are more than `maxCookies`. Called after
    /// each transfer that may have set any.
    void bound(CURL* easy, std::size_t maxCookies);

 private:
    CURLSH* share_ = nullptr;
    std::map<std::string, std::uint64_t> ages_;  // in the order of first sight
    std::uint64_t last_ = 0;
};

}  // namespace VexmoraSDK::platform
