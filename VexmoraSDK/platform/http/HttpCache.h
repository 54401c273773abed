#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "VexmoraSDK/platform/foundation/Data.h"
#include "VexmoraSDK/platform/foundation/Url.h"
#include "VexmoraSDK/platform/http/CacheTerms.h"
#include "VexmoraSDK/platform/http/UrlSessionLimits.h"

namespace VexmoraSDK::platform {

/// Answers that may be used again, in memory. Those that were used last stay longest. Any thread.
class HttpCache {
 public:
    using Time = CacheTerms::Time;

    static Time now() {
        return std::chrono::floor<Time::duration>(std::chrono::system_clock::now());
    }

    /// A whole answer of status 200, its body decoded.
    struct Answer {
        std::string address;  ///< Without a fragment.
        CacheTerms terms;
        std::shared_ptr<const Data> body;
        Time received;
        Time freshUntil;

        /// Whether it may be used without asking. Clocks are set back, too.
        bool isFresh(Time now) const { return received <= now && now < freshUntil; }
    };

    /// When a request was sent and its answer was there.
    struct Times {
        Time asked;
        Time received;
    };

    explicit HttpCache(const UrlSessionLimits& limits) : limits_(limits) {}

    /// That of the shared session; never destroyed.
    static HttpCache& shared() {
        static auto& cache = *new HttpCache(UrlSessionLimits::shared());
        return cache;
    }

    /// The answer to use for the address, or to ask the server about; null when there is none.
    std::shared_ptr<const Answer> find(const Url& url, Time now);

    /// Forgets the answer before, and keeps this one if its terms, where there are any, allow it.
    /// Where memory lacks it is not kept.
    void keep(const Url& url, const std::optional<CacheTerms>& terms, const Data& body,
              Times times) noexcept;

    /// The server was asked about the answer, and it is still right.
    void renew(const std::shared_ptr<const Answer>& answer, const CacheTerms& terms,
               Times times) noexcept;

 private:
    using Answers = std::list<std::shared_ptr<const Answer>>;

    void put(std::shared_ptr<const Answer> answer);
    void remove(std::string_view address);

    const UrlSessionLimits& limits_;
    std::mutex mutex_;
    Answers answers_;  // used last, first
    std::unordered_map<std::string_view, Answers::iterator> places_;
    std::size_t bytes_ = 0;
};

}  // namespace VexmoraSDK::platform
