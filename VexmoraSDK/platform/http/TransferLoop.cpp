#include "VexmoraSDK/platform/http/TransferLoop.h"

#include <chrono>
#include <thread>
#include <utility>

#include "VexmoraSDK/platform/http/UrlSessionLimits.h"

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
    if (!cookies ||
        curl_share_setopt(cookies, CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE) == CURLSHE_OK) {
        return cookies;
    }
    curl_share_cleanup(cookies);
    return nullptr;
}

}  // namespace

std::size_t TransferLoop::add(std::shared_ptr<Transfer> transfer) {
    const std::lock_guard lock(mutex_);
    if (!cookies_) cookies_ = makeCookieJar();
    if (!multi_) multi_ = makeMulti();
    if (!cookies_ || !multi_) return 0;
    waiting_.push_back(std::move(transfer));
    return waiting_.size();
}

bool TransferLoop::remove(const std::shared_ptr<Transfer>& transfer) {
    const std::lock_guard lock(mutex_);
    return std::erase(waiting_, transfer) > 0;
}

bool TransferLoop::isBusy() {
    const std::lock_guard lock(mutex_);
    return !waiting_.empty() || !exchanges_.empty();
}

bool TransferLoop::wake() {
    return curl_multi_wakeup(multi_) == CURLM_OK;
}

std::vector<std::shared_ptr<Transfer>> TransferLoop::turn() {
    Ended ended;
    beginWaiting(ended);
    int running = 0;
    const auto performed = curl_multi_perform(multi_, &running);
    takeDone(ended);
    if (!ended.empty()) return ended;
    const auto polled = curl_multi_poll(multi_, nullptr, 0, kLongestPoll, nullptr);
    if (performed != CURLM_OK || polled != CURLM_OK) {
        // Lack of memory, say: not to be met with a busy loop. The transfers have their limits.
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return ended;
}

void TransferLoop::beginWaiting(Ended& ended) {
    std::unique_lock lock(mutex_);
    while (!waiting_.empty() && exchanges_.size() < UrlSessionLimits::shared().transfers) {
        auto transfer = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        begin(std::move(transfer), ended);
        lock.lock();
    }
}

void TransferLoop::begin(std::shared_ptr<Transfer> transfer, Ended& ended) {
    auto exchange = std::make_unique<HttpExchange>(std::move(transfer));
    CURLcode result = exchange->configure(cookies_);
    if (result == CURLE_OK && curl_multi_add_handle(multi_, exchange->easy()) == CURLM_OK) {
        exchanges_.emplace(exchange->easy(), std::move(exchange));
    } else {
        exchange->finish(result == CURLE_OK ? CURLE_FAILED_INIT : result);
        ended.push_back(exchange->transfer());
    }
}

void TransferLoop::takeDone(Ended& ended) {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        const CURLcode result = message->data.result;
        const auto done = exchanges_.extract(message->easy_handle);
        // The end of the exchange removes what could not be removed here.
        static_cast<void>(curl_multi_remove_handle(multi_, done.key()));
        done.mapped()->finish(result);
        ended.push_back(done.mapped()->transfer());
    }
}

}  // namespace VexmoraSDK::platform
