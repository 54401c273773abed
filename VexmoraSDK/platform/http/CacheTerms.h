#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace VexmoraSDK::platform {

/// What the head of an answer says of using it again: the values of headers as they came, those of
/// several lines with commas between, empty where there is none. They are read as RFC 9111 tells
/// private caches to. Nothing is guessed, and what cannot be read speaks against the answer.
struct CacheTerms {
    using Time = std::chrono::sys_seconds;

    std::string cacheControl{};
    std::string vary{};
    std::string date{};
    std::string age{};
    std::string expires{};
    std::string etag{};
    std::string lastModified{};
    bool setsCookie = false;

    /// Whether the answer may be kept at all. Requests differ in nothing but their cookies, so an
    /// answer that may vary with these is not, and neither is one that sets some.
    bool allowKeeping() const;

    /// Until when the answer may be used without asking; not after `received` when at no time.
    Time freshUntil(Time asked, Time received) const;

    /// The headers that ask the server whether the answer is still right; none when it cannot be.
    std::vector<std::string> conditions() const;

    /// Takes over what the server said when it was asked, and the answer was right.
    void renew(const CacheTerms& newer);

    std::size_t bytes() const;
};

}  // namespace VexmoraSDK::platform
