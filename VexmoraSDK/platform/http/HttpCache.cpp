#include "VexmoraSDK/platform/http/HttpCache.h"

#include <new>
#include <utility>

namespace VexmoraSDK::platform {
namespace {

/// One answer takes at most this part of it all, so that a large one does not drive out the rest.
constexpr std::size_t kShares = 8;

/// What an answer takes besides its texts and body, roughly.
constexpr std::size_t kOverhead = 512;

/// The server does not get to see more of the address.
std::string_view addressOf(const Url& url) {
    const std::string_view text = url.text();
    return text.substr(0, text.find('#'));
}

std::size_t sizeOf(const HttpCache::Answer& answer, std::size_t body) {
    return kOverhead + answer.address.size() + answer.terms.bytes() + body;
}

/// Whether the answer may be kept, and will be of use.
bool isWorthKeeping(const HttpCache::Answer& answer) {
    return answer.terms.allowKeeping() &&
           (answer.freshUntil > answer.received || !answer.terms.conditions().empty());
}

}  // namespace

std::shared_ptr<const HttpCache::Answer> HttpCache::find(const Url& url, Time now) {
    const std::lock_guard lock(mutex_);
    const auto place = places_.find(addressOf(url));
    if (place == places_.end()) return nullptr;
    auto answer = *place->second;
    if (!answer->isFresh(now) && answer->terms.conditions().empty()) return nullptr;
    answers_.splice(answers_.begin(), answers_, place->second);
    return answer;
}

void HttpCache::keep(const Url& url, const std::optional<CacheTerms>& terms, const Data& body,
                     Times times) noexcept {
    try {
        const auto address = addressOf(url);
        std::shared_ptr<const Answer> kept;
        if (terms) {
            Answer answer{std::string(address), *terms, nullptr, times.received,
                          terms->freshUntil(times.asked, times.received)};
            if (isWorthKeeping(answer) && sizeOf(answer, body.size()) <= limits_.cache / kShares) {
                answer.body = std::make_shared<const Data>(body);
                kept = std::make_shared<const Answer>(std::move(answer));
            }
        }
        const std::lock_guard lock(mutex_);
        remove(address);
        if (kept) put(std::move(kept));
    } catch (const std::bad_alloc&) {
        // Then it is not kept.
    }
}

void HttpCache::renew(const std::shared_ptr<const Answer>& answer, const CacheTerms& terms,
                      Times times) noexcept {
    try {
        Answer renewed = *answer;
        renewed.terms.renew(terms);
        renewed.received = times.received;
        renewed.freshUntil = renewed.terms.freshUntil(times.asked, times.received);
        // A server that was asked about one answer and speaks of another is not to be relied on.
        std::shared_ptr<const Answer> kept;
        if (renewed.terms.etag == answer->terms.etag && isWorthKeeping(renewed))
            kept = std::make_shared<const Answer>(std::move(renewed));

        const std::lock_guard lock(mutex_);
        const auto place = places_.find(answer->address);
        if (place == places_.end() || *place->second != answer) return;
        remove(answer->address);
        if (kept) put(std::move(kept));
    } catch (const std::bad_alloc&) {
        // Then it has to be asked about again.
    }
}

void HttpCache::put(std::shared_ptr<const Answer> answer) {
    Answers added{std::move(answer)};
    places_.emplace(added.front()->address, added.begin());
    answers_.splice(answers_.begin(), added);
    bytes_ += sizeOf(*answers_.front(), answers_.front()->body->size());
    while (bytes_ > limits_.cache)
        remove(answers_.back()->address);
}

void HttpCache::remove(std::string_view address) {
    const auto found = places_.find(address);
    if (found == places_.end()) return;
    const auto place = found->second;
    bytes_ -= sizeOf(**place, (*place)->body->size());
    places_.erase(found);
    answers_.erase(place);
}

}  // namespace VexmoraSDK::platform
