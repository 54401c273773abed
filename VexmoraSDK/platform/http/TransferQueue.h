// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>

#include "VexmoraSDK/platform/http/Fetch.h"
#include "VexmoraSDK/platform/http/UrlSessionLimits.h"

namespace VexmoraSDK::platform {

/// Who begins next. There are as many places as there may be transfers; a fetch holds one from its
/// beginning until its completion has run. An origin (scheme, host and port) holds at most half of
/// them, and origins take turns. Tasks of low priority begin after the others, and leave an eighth
/// of all places and of each origin's free for them.
class TransferQueue {
 public:
    explicit TransferQueue(const UrlSessionLimits& limits) : limits_(limits) {}

    void push(std::shared_ptr<Fetch> fetch);

    bool isEmpty() const { return lines_.front().turns.empty() && lines_.back().turns.empty(); }
    /// Whether a fetch waits that may begin.
    bool isReady() const { return next().line != nullptr; }
    /// The next fetch, which has a place from now on. Only when it is ready.
    std::shared_ptr<Fetch> pop();
    /// Gives back the place that a fetch has.
    void release(const Fetch& fetch);

 private:
    using Turns = std::list<std::string>;
    struct Line {
        Turns turns;  // the origins that wait in it; the next one comes first
        std::unordered_map<std::string, std::deque<std::shared_ptr<Fetch>>> waiting;  // by origin
    };
    struct Next {
        const Line* line = nullptr;
        Turns::const_iterator turn;
    };

    Next next() const;

    const UrlSessionLimits& limits_;
    std::array<Line, 2> lines_;                            // by priority
    std::unordered_map<std::string, std::size_t> places_;  // by origin
    std::size_t allPlaces_ = 0;
};

}  // namespace VexmoraSDK::platform
