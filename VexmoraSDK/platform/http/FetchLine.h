// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <deque>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>

#include "VexmoraSDK/platform/http/Fetch.h"

namespace VexmoraSDK::platform {

/// Fetches that wait, for a place or for their completion. Origins take turns, and the fetches of
/// one origin keep their order.
class FetchLine {
 public:
    using Turns = std::list<std::string>;

    void push(std::shared_ptr<Fetch> fetch);

    bool isEmpty() const { return turns_.empty(); }
    std::size_t size() const { return size_; }
    /// How many of them are of that origin.
    std::size_t sizeOf(const std::string& origin) const;

    /// The origins that wait; the next one comes first.
    const Turns& turns() const { return turns_; }
    /// Takes out the first fetch of that origin, whose next turn comes after those of all others.
    std::shared_ptr<Fetch> pop(Turns::const_iterator turn);

 private:
    Turns turns_;
    std::unordered_map<std::string, std::deque<std::shared_ptr<Fetch>>> waiting_;  // by origin
    std::size_t size_ = 0;
};

}  // namespace VexmoraSDK::platform
