#include "VexmoraSDK/platform/UrlSession.h"

#include <unistd.h>

#include <cstdlib>
#include <new>
#include <utility>

#include "VexmoraSDK/platform/Image.h"
#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/common/DeliveryThreads.h"
#include "VexmoraSDK/platform/common/TransferLoop.h"

namespace VexmoraSDK::platform {
namespace {

/// What works for the shared session: bytes move on one thread, completions run on others, so that
/// decoding a picture delays no transfer.
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
            deliver(std::move(transfer));
        } else if (libcurlSetUp_ != CURLE_OK) {
            transfer->fail(libcurlSetUp_, curl_easy_strerror(libcurlSetUp_));
            deliver(std::move(transfer));
        } else {
            loop_.start(std::move(transfer));
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

    void deliver(std::shared_ptr<Transfer> transfer) {
        threads_.run([transfer = std::move(transfer)] {
            const auto completion = std::exchange(transfer->completion, nullptr);
            if (transfer->error) {
                completion(std::nullopt, std::nullopt, std::move(transfer->error));
            } else {
                completion(std::move(transfer->body), transfer->response, std::nullopt);
            }
        });
    }

    void stop() {
        // A process that was forked off has none of the threads.
        if (getpid() != process_) return;
        loop_.stop();
        threads_.stop();
    }

    const pid_t process_ = getpid();
    const CURLcode libcurlSetUp_ = curl_global_init(CURL_GLOBAL_DEFAULT);
    DeliveryThreads threads_;
    TransferLoop loop_{[this](std::shared_ptr<Transfer> done) { deliver(std::move(done)); }};
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
