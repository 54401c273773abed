#include "VexmoraSDK/platform/common/TransferLoop.h"

#include <chrono>
#include <utility>

#include "VexmoraSDK/platform/common/UrlSessionLimits.h"
#include "VexmoraSDK/platform/common/WorkerThread.h"

namespace VexmoraSDK::platform {
namespace {

/// Polling sleeps until a transfer, a limit or `start` wants it; this is only how long at most.
constexpr int kLongestPoll = 60 * 60 * 1000;

/// Absent too when no descriptors are left for what wakes its polling up.
CURLM* makeMulti() {
    CURLM* multi = curl_multi_init();
    if (!multi || curl_multi_wakeup(multi) == CURLM_OK) return multi;
    curl_multi_cleanup(multi);
    return nullptr;
}

CURLSH* makeCookieJar() {
    CURLSH* cookies = curl_share_init();
    curl_share_setopt(cookies, CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE);
    return cookies;
}

}  // namespace

TransferLoop::TransferLoop(Sink finished) : finished_(std::move(finished)) {}

void TransferLoop::start(std::shared_ptr<Transfer> transfer) {
    {
        const std::lock_guard lock(mutex_);
        if (stopped_) return;
        waiting_.push_back(transfer);
        // Where others wait already, the thread looks by itself as soon as there is room.
        if (waiting_.size() > 1 || wakeThread()) return;
        waiting_.pop_back();
    }
    transfer->fail(CURLE_FAILED_INIT, curl_easy_strerror(CURLE_FAILED_INIT));
    finished_(std::move(transfer));
}

bool TransferLoop::wakeThread() {
    if (!multi_) multi_ = makeMulti();
    if (!multi_) return false;
    if (!thread_.joinable()) thread_ = startWorkerThread("vexmora-io", [this] { run(); });
    return curl_multi_wakeup(multi_) == CURLM_OK;
}

void TransferLoop::stop() {
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
        if (multi_) curl_multi_wakeup(multi_);
    }
    finishWorkerThread(thread_);
}

void TransferLoop::run() {
    cookies_ = makeCookieJar();
    while (beginWaiting()) {
        if (curl_multi_poll(multi_, nullptr, 0, kLongestPoll, nullptr) != CURLM_OK) {
            // Lack of memory, say: not to be met with a busy loop.
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        int running = 0;
        curl_multi_perform(multi_, &running);
        finishDone();
    }
}

bool TransferLoop::beginWaiting() {
    std::unique_lock lock(mutex_);
    while (!stopped_ && !waiting_.empty() &&
           exchanges_.size() < UrlSessionLimits::shared().transfers) {
        auto transfer = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        begin(std::move(transfer));
        lock.lock();
    }
    return !stopped_;
}

void TransferLoop::begin(std::shared_ptr<Transfer> transfer) {
    auto exchange = std::make_unique<HttpExchange>(std::move(transfer));
    CURLcode result = exchange->configure(cookies_);
    if (result == CURLE_OK && curl_multi_add_handle(multi_, exchange->easy()) == CURLM_OK) {
        exchanges_.emplace(exchange->easy(), std::move(exchange));
    } else {
        exchange->finish(result == CURLE_OK ? CURLE_FAILED_INIT : result);
        finished_(exchange->transfer());
    }
}

void TransferLoop::finishDone() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        const CURLcode result = message->data.result;
        const auto done = exchanges_.extract(message->easy_handle);
        curl_multi_remove_handle(multi_, done.key());
        done.mapped()->finish(result);
        finished_(done.mapped()->transfer());
    }
}

}  // namespace VexmoraSDK::platform
