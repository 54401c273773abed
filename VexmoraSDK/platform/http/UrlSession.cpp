// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/UrlSession.h"

#include <utility>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/http/Fetch.h"
#include "VexmoraSDK/platform/http/ProcessExit.h"
#include "VexmoraSDK/platform/http/SessionThreads.h"

namespace VexmoraSDK::platform {

struct UrlSession::Impl {
    /// The way of every GET begins here.
    void start(std::shared_ptr<Fetch> fetch) {
        static const CURLcode setUp = setUpLibcurl();
        const auto scheme = fetch->url.scheme();
        if ((scheme != "http" && scheme != "https") || fetch->url.host().empty()) {
            // libcurl would guess what is missing; a relative reference leads nowhere.
            fetch->fail(CURLE_UNSUPPORTED_PROTOCOL, "The address is not one of HTTP");
        } else if (setUp != CURLE_OK) {
            fetch->fail(setUp, curl_easy_strerror(setUp));
        } else if (!fetch->isServedFromCache()) {
            return threads.transfer(std::move(fetch));
        }
        threads.complete(std::move(fetch));
    }

    static CURLcode setUpLibcurl() {
        const CURLcode result = curl_global_init(CURL_GLOBAL_DEFAULT);
        prepareProcessExit();
        return result;
    }

    UrlSessionLimits limits;
    HttpCache cache{limits};
    SessionThreads threads{limits};
};

UrlSession::UrlSession() : impl_(std::make_shared<Impl>()) {}

UrlSession& UrlSession::shared() {
    static NoDestructor<UrlSession> session;
    return *session;
}

UrlSessionTask UrlSession::dataTask(Url url, Completion completion, TaskPriority priority) {
    return UrlSessionTask(std::make_shared<Fetch>(std::move(url), std::move(completion),
                                                  impl_->cache, impl_->limits, priority));
}

void UrlSessionTask::resume() {
    if (fetch_->resumed.exchange(true)) return;
    UrlSession::Impl& session = *UrlSession::shared().impl_;
    if (auto* queue = MainQueue::main(); queue && queue->isRunningBlock()) {
        queue->async([&session, fetch = fetch_] { session.start(fetch); });
    } else {
        session.start(fetch_);
    }
}

UrlSessionLimits& UrlSession::limits() {
    return impl_->limits;
}

void UrlSession::stop() {
    impl_->threads.stop();
}

}  // namespace VexmoraSDK::platform
