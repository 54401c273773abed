// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/TransferQueue.h"

#include <algorithm>
#include <utility>

namespace VexmoraSDK::platform {

void TransferQueue::push(std::shared_ptr<Fetch> fetch) {
    Line& line = lines_[static_cast<std::size_t>(fetch->priority)];
    auto& waiting = line.waiting[fetch->origin];
    if (waiting.empty()) line.turns.push_back(fetch->origin);
    waiting.push_back(std::move(fetch));
}

std::shared_ptr<Fetch> TransferQueue::pop() {
    const auto [found, turn] = next();
    Line& line = lines_[static_cast<std::size_t>(found - lines_.data())];
    const auto origin = line.waiting.find(*turn);
    auto fetch = std::move(origin->second.front());
    origin->second.pop_front();
    if (origin->second.empty()) {
        line.waiting.erase(origin);
        line.turns.erase(turn);
    } else {
        line.turns.splice(line.turns.end(), line.turns, turn);
    }
    ++places_[fetch->origin];
    ++allPlaces_;
    fetch->hasPlace = true;
    return fetch;
}

void TransferQueue::release(const Fetch& fetch) {
    --allPlaces_;
    const auto places = places_.find(fetch.origin);
    if (--places->second == 0) places_.erase(places);
}

TransferQueue::Next TransferQueue::next() const {
    for (const Line& line : lines_) {
        if (line.turns.empty()) continue;
        const bool isLow = &line != &lines_.front();
        const auto most = [isLow](std::size_t places) {
            return isLow ? places - places / 8 : places;
        };
        const std::size_t all = limits_.maxConcurrentTransfers;
        if (allPlaces_ >= most(all)) continue;
        for (auto turn = line.turns.begin(); turn != line.turns.end(); ++turn) {
            const auto places = places_.find(*turn);
            const std::size_t held = places == places_.end() ? 0 : places->second;
            if (held < most(std::max<std::size_t>(all / 2, 1))) return {&line, turn};
        }
    }
    return {};
}

}  // namespace VexmoraSDK::platform
