// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/TransferQueue.h"

#include <algorithm>
#include <utility>

namespace VexmoraSDK::platform {
namespace {

/// An origin's part of a limit.
std::size_t shareOf(std::size_t limit) {
    return std::max<std::size_t>(limit / 2, 1);
}

/// How many of these places a task may take.
std::size_t placesFor(TaskPriority priority, std::size_t places) {
    return priority == TaskPriority::low ? places - places / 8 : places;
}

}  // namespace

void TransferQueue::push(std::shared_ptr<Fetch> fetch) {
    FetchLine& line = lines_[fetch->priority];
    line.push(std::move(fetch));
}

std::shared_ptr<Fetch> TransferQueue::pop() {
    const auto [priority, turn] = next().value();
    auto fetch = lines_[priority].pop(turn);
    ++shares_[fetch->origin].places;
    ++places_;
    fetch->hasPlace = true;
    return fetch;
}

std::size_t TransferQueue::countReuses() const {
    std::size_t count = 0;
    for (const auto& [origin, share] : shares_)
        for (const auto& line : lines_.values)
            count += line.sizeOf(origin);
    return count;
}

void TransferQueue::hold(Fetch& fetch, std::size_t bytes) {
    if (bytes == fetch.heldBytes) return;  // nothing new, as mostly
    for (std::size_t* held :
         {&heldBytes_[fetch.priority], &shares_.at(fetch.origin).heldBytes[fetch.priority]}) {
        *held = *held - fetch.heldBytes + bytes;
    }
    fetch.heldBytes = bytes;
}

void TransferQueue::release(Fetch& fetch) {
    hold(fetch, 0);
    --places_;
    const auto share = shares_.find(fetch.origin);
    if (--share->second.places == 0) shares_.erase(share);
}

// The limits may change while nothing waits.
std::optional<TransferQueue::Next> TransferQueue::next() const {
    for (const auto priority : {TaskPriority::normal, TaskPriority::low}) {
        const auto& turns = lines_[priority].turns();
        if (turns.empty() || isFull(priority)) continue;
        for (auto turn = turns.begin(); turn != turns.end(); ++turn)
            if (hasShareLeft(*turn, priority)) return Next{priority, turn};
    }
    return std::nullopt;
}

bool TransferQueue::isFull(TaskPriority priority) const {
    std::size_t bytes = 0;
    for (const auto& [origin, share] : shares_)
        bytes += std::min(share.heldBytes[priority], shareOf(limits_.maxHeldBodyBytes));
    return bytes >= limits_.maxHeldBodyBytes ||
           places_ >= placesFor(priority, limits_.maxConcurrentTransfers);
}

bool TransferQueue::hasShareLeft(const std::string& origin, TaskPriority priority) const {
    const auto found = shares_.find(origin);
    if (found == shares_.end()) return true;
    const Share& share = found->second;
    return share.places < placesFor(priority, shareOf(limits_.maxConcurrentTransfers)) &&
           share.heldBytes[priority] < shareOf(limits_.maxHeldBodyBytes);
}

}  // namespace VexmoraSDK::platform
