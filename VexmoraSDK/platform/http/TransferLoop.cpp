// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/TransferLoop.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace VexmoraSDK::platform {
namespace {

/// Should `wake` ever fail, a request waits no longer than this. While it has transfers libcurl
/// looks after them as often anyway.
constexpr int kMaxPollMilliseconds = 1000;

void settle(Fetch& fetch, CurlTransfer& transfer) {
    if (transfer.error() == CURLE_OK) {
        fetch.response = std::move(transfer.response());
    } else {
        fetch.fail(transfer.error(), transfer.errorText());
    }
}

}  // namespace

void TransferLoop::open() {
    if (multi_) return;
    const NextDescriptors wakeUp;
    multi_ = curl_multi_init();
    wakeUp.closeOnExec();
}

void TransferLoop::wake() {
    if (multi_) curl_multi_wakeup(multi_);
}

TransferLoop::Fetches TransferLoop::turn(Fetches starting, std::size_t reuses,
                                         const HeldBytes& heldBytes) {
    heldBytes_ = heldBytes;
    // A connection that another transfer will use is not idle. While there are more than this,
    // those in use included, libcurl closes one for each transfer that ends. It closes none later,
    // so there must never be more than will be used.
    const auto connections =
        limits_.maxIdleConnections + std::min(reuses, limits_.maxConcurrentTransfers);
    curl_multi_setopt(multi_, CURLMOPT_MAXCONNECTS, static_cast<long>(connections));
    Fetches ended;
    for (auto& fetch : starting)
        begin(std::move(fetch), ended);
    int running = 0;
    const auto performed = curl_multi_perform(multi_, &running);
    if (resolving_) resolving_->closeOnExec();
    resolving_.reset();
    takeDone(ended);
    if (!ended.empty()) return ended;
    const auto polled = curl_multi_poll(multi_, nullptr, 0, kMaxPollMilliseconds, nullptr);
    if (performed != CURLM_OK || polled != CURLM_OK) {
        // libcurl lacks memory, say: this keeps the loop from being a busy one until the transfers
        // meet their limits of time.
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return ended;
}

void TransferLoop::begin(std::shared_ptr<Fetch> fetch, Fetches& ended) {
    if (fetch->isServedFromCache()) return ended.push_back(std::move(fetch));
    fetch->requestTime = HttpCache::now();
    auto transfer = std::unique_ptr<Transfer>(
        new Transfer{fetch,
                     {easyHandles_.take(), fetch->url.text(), fetch->requestHeaders(),
                      cookies_.share(), limits_, heldBytes_[fetch->priority], resolving_}});
    CurlTransfer& curl = transfer->curl;
    if (curl.isReady() && curl_multi_add_handle(multi_, curl.easy()) == CURLM_OK) {
        transfers_.emplace(curl.easy(), std::move(transfer));
        return;
    }
    if (curl.isReady()) curl.finish(CURLE_FAILED_INIT);
    settle(*fetch, curl);
    ended.push_back(std::move(fetch));
}

void TransferLoop::takeDone(Fetches& ended) {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        const CURLcode result = message->data.result;
        CURL* const easy = message->easy_handle;
        const auto found = transfers_.find(easy);
        CurlTransfer& curl = found->second->curl;
        // A handle that cannot be removed here is removed when the transfer is destroyed.
        const bool isRemoved = curl_multi_remove_handle(multi_, easy) == CURLM_OK;
        if (curl.finish(result)) {
            if (curl_multi_add_handle(multi_, easy) == CURLM_OK) continue;
            curl.finish(CURLE_FAILED_INIT);
        }
        if (curl.setsCookies()) cookies_.bound(easy, limits_.maxCookies);
        settle(*found->second->fetch, curl);
        ended.push_back(std::move(found->second->fetch));
        if (isRemoved && result == CURLE_OK) easyHandles_.giveBack(curl.takeEasy());
        transfers_.erase(found);
    }
}

}  // namespace VexmoraSDK::platform
