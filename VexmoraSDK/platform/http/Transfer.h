#pragma once

#include <atomic>
#include <memory>
#include <optional>

#include "VexmoraSDK/platform/http/HttpCache.h"
#include "VexmoraSDK/platform/http/UrlSession.h"

namespace VexmoraSDK::platform {

/// One GET, from the call that made its task to its completion.
struct UrlSessionTask::Transfer {
    Transfer(Url address, UrlSession::Completion callback)
        : url(std::move(address)), completion(std::move(callback)) {}

    /// Ends it as a failed one. `code` is libcurl's.
    void fail(int code, const char* description);

    /// Looks for an earlier answer. True when that will do, and nothing is to be asked.
    bool isAnsweredByCache();

    /// Lets the cache know of the answer, runs the completion with the outcome, and lets go of what
    /// it holds.
    void complete();

    const Url url;
    UrlSession::Completion completion;
    std::atomic<bool> resumed = false;

    Data body;
    UrlResponse response;
    std::optional<Error> error;

    /// An earlier answer to use, or to ask the server about.
    std::shared_ptr<const HttpCache::Answer> earlier;
    /// Whether that one is the answer to this request, too.
    bool usesEarlier = false;
    /// Of an answer that came now; absent when it is not to be kept.
    std::optional<CacheTerms> terms;
    HttpCache::Time asked;

 private:
    void consultCache();
};

using Transfer = UrlSessionTask::Transfer;

}  // namespace VexmoraSDK::platform
