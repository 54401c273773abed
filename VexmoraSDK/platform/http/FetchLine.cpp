// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/FetchLine.h"

#include <utility>

namespace VexmoraSDK::platform {

void FetchLine::push(std::shared_ptr<Fetch> fetch) {
    auto& waiting = waiting_[fetch->origin];
    if (waiting.empty()) turns_.push_back(fetch->origin);
    waiting.push_back(std::move(fetch));
    ++size_;
}

std::size_t FetchLine::sizeOf(const std::string& origin) const {
    const auto found = waiting_.find(origin);
    return found == waiting_.end() ? 0 : found->second.size();
}

std::shared_ptr<Fetch> FetchLine::pop(Turns::const_iterator turn) {
    const auto origin = waiting_.find(*turn);
    auto fetch = std::move(origin->second.front());
    origin->second.pop_front();
    if (origin->second.empty()) {
        waiting_.erase(origin);
        turns_.erase(turn);
    } else {
        turns_.splice(turns_.end(), turns_, turn);
    }
    --size_;
    return fetch;
}

}  // namespace VexmoraSDK::platform
