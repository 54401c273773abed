// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/HttpCache.h"

#include <new>
#include <utility>

namespace VexmoraSDK::platform {
namespace {

/// A response takes at most this part of the cache, so that a large one does not drive out the
/// rest.
constexpr std::size_t kMaxShare = 8;

/// Roughly what a response takes besides its texts and body.
constexpr std::size_t kOverheadBytes = 512;

/// A fragment is not sent to the server.
std::string_view addressOf(const Url& url) {
    const std::string_view text = url.text();
    return text.substr(0, text.find('#'));
}

std::size_t sizeOf(const CachedResponse& response) {
    return kOverheadBytes + response.address.size() + response.policy.bytes() +
           response.body->size();
}

/// Whether the response can be used again if it is stored.
bool isReusable(const CachedResponse& response) {
    return response.freshUntil > response.responseTime ||
           !response.policy.conditionalHeaders().empty();
}

}  // namespace

HttpCache::Response HttpCache::find(const Url& url, Time now) {
    const std::lock_guard lock(mutex_);
    const auto found = byAddress_.find(addressOf(url));
    if (found == byAddress_.end()) return nullptr;
    const Response& response = *found->second;
    if (!response->isFresh(now) && response->policy.conditionalHeaders().empty()) return nullptr;
    responses_.splice(responses_.begin(), responses_, found->second);
    return response;
}

void HttpCache::store(const Url& url, const CachePolicy& policy, const SharedData& body,
                      Times times) noexcept {
    try {
        const auto address = addressOf(url);
        Response stored;
        if (policy.isStorable()) {
            CachedResponse response{std::string(address), policy, body, times.responseTime,
                                    policy.freshUntil(times.requestTime, times.responseTime)};
            if (isReusable(response) && sizeOf(response) <= limits_.maxCacheBytes / kMaxShare)
                stored = std::make_shared<const CachedResponse>(std::move(response));
        }
        const std::lock_guard lock(mutex_);
        remove(address);
        if (stored) put(std::move(stored));
    } catch (const std::bad_alloc&) {
        // The response is not stored.
    }
}

void HttpCache::revalidated(const Response& response, const CachePolicy& policy,
                            Times times) noexcept {
    try {
        CachedResponse updated = *response;
        updated.policy.update(policy);
        updated.responseTime = times.responseTime;
        updated.freshUntil = updated.policy.freshUntil(times.requestTime, times.responseTime);
        // A 304 that names another entity tag than the request is not to be relied on.
        Response stored;
        if (updated.policy.etag == response->policy.etag && updated.policy.isStorable() &&
            isReusable(updated))
            stored = std::make_shared<const CachedResponse>(std::move(updated));

        const std::lock_guard lock(mutex_);
        const auto found = byAddress_.find(response->address);
        if (found == byAddress_.end() || *found->second != response) return;
        remove(response->address);
        if (stored) put(std::move(stored));
    } catch (const std::bad_alloc&) {
        // The stored response stays stale.
    }
}

void HttpCache::put(Response response) {
    Responses added{std::move(response)};
    byAddress_.emplace(added.front()->address, added.begin());
    responses_.splice(responses_.begin(), added);
    bytes_ += sizeOf(*responses_.front());
    while (bytes_ > limits_.maxCacheBytes)
        remove(responses_.back()->address);
}

void HttpCache::remove(std::string_view address) {
    const auto found = byAddress_.find(address);
    if (found == byAddress_.end()) return;
    const auto place = found->second;
    bytes_ -= sizeOf(**place);
    byAddress_.erase(found);
    responses_.erase(place);
}

}  // namespace VexmoraSDK::platform
