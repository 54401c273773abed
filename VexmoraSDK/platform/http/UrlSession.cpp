#include "VexmoraSDK/platform/http/UrlSession.h"

#include <unistd.h>

#include <cstdlib>
#include <new>
#include <utility>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/http/SessionThreads.h"
#include "VexmoraSDK/platform/images/Image.h"

namespace VexmoraSDK::platform {
namespace {

/// What works for the shared session.
class Engine {
 public:
    static Engine& shared() {
        static auto& engine = *new Engine;
        return engine;
    }

    void start(std::shared_ptr<Transfer> transfer) {
        // libcurl would guess what is not written; a relative reference leads nowhere.
        const auto scheme = transfer->url.scheme();
        if ((scheme != "http" && scheme != "https") || transfer->url.host().empty()) {
            transfer->fail(CURLE_UNSUPPORTED_PROTOCOL, "The address is not one of HTTP");
            threads_.complete(std::move(transfer));
        } else if (libcurlSetUp_ != CURLE_OK) {
            transfer->fail(libcurlSetUp_, curl_easy_strerror(libcurlSetUp_));
            threads_.complete(std::move(transfer));
        } else if (transfer->isAnsweredByCache()) {
            threads_.complete(std::move(transfer));
        } else {
            threads_.start(std::move(transfer));
        }
    }

 private:
    Engine() {
        // Handlers run in the reverse order of their registration, and this one must find alive
        // what the threads use: TLS, which libcurl has set up by now, and what decodes pictures.
        Image::prepareDecoding();
        if (auto* queue = MainQueue::main()) queue->endWithProcess();
        if (std::atexit([] { shared().stop(); }) != 0) throw std::bad_alloc();
    }

    void stop() {
        // A process that was forked off has none of the threads.
        if (getpid() != process_) return;
        threads_.stop();
    }

    const pid_t process_ = getpid();
    const CURLcode libcurlSetUp_ = curl_global_init(CURL_GLOBAL_DEFAULT);
    SessionThreads threads_;
};

}  // namespace

UrlSession& UrlSession::shared() {
    static auto& session = *new UrlSession;
    return session;
}

UrlSessionTask UrlSession::dataTask(Url url, Completion completion) {
    return UrlSessionTask(std::make_shared<Transfer>(std::move(url), std::move(completion)));
}

void UrlSessionTask::resume() {
    if (transfer_->resumed.exchange(true)) return;
    if (auto* queue = MainQueue::main(); queue && queue->isRunningBlock()) {
        queue->async([transfer = transfer_] { Engine::shared().start(transfer); });
    } else {
        Engine::shared().start(transfer_);
    }
}

}  // namespace VexmoraSDK::platform
