#pragma once

#include <atomic>
#include <optional>
#include <utility>

#include "VexmoraSDK/platform/UrlSession.h"

namespace VexmoraSDK::platform {

/// One GET, from the call that made its task to its completion.
struct UrlSessionTask::Transfer {
    Transfer(Url address, UrlSession::Completion callback)
        : url(std::move(address)), completion(std::move(callback)) {}

    /// Ends it as a failed one. `code` is libcurl's.
    void fail(int code, const char* description) {
        Dictionary userInfo;
        userInfo.emplace(kLocalizedDescriptionKey, std::string(description));
        userInfo.emplace(kFailingUrlStringKey, url.text());
        error.emplace("VexmoraURLErrorDomain", code, std::move(userInfo));
    }

    /// Runs the completion with the outcome, and lets go of what it holds.
    void complete() {
        const auto callback = std::exchange(completion, nullptr);
        if (error) {
            callback(std::nullopt, std::nullopt, std::move(error));
        } else {
            callback(std::move(body), response, std::nullopt);
        }
    }

    const Url url;
    UrlSession::Completion completion;
    std::atomic<bool> resumed = false;

    Data body;
    UrlResponse response;
    std::optional<Error> error;
};

using Transfer = UrlSessionTask::Transfer;

}  // namespace VexmoraSDK::platform
