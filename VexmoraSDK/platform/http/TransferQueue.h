// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "VexmoraSDK/platform/http/ByPriority.h"
#include "VexmoraSDK/platform/http/FetchLine.h"
#include "VexmoraSDK/platform/http/UrlSessionLimits.h"

namespace VexmoraSDK::platform {

/// The fetches that wait for a transfer, and the places of those that have begun. There are as many
/// places as there may be transfers; a fetch has one from its beginning until its completion has
/// run, and holds its body meanwhile. An origin (scheme, host and port) has at most half of the
/// places, and origins take turns.
///
/// Tasks of low priority begin after the others, and leave an eighth of all places and of each
/// origin's free for them. No task begins while the bodies of its priority hold the limit, of which
/// those of one origin count for half at most, nor while those of its own origin hold that half.
class TransferQueue {
 public:
    explicit TransferQueue(const UrlSessionLimits& limits) : limits_(limits) {}

    void push(std::shared_ptr<Fetch> fetch);

    /// Whether a fetch waits that may begin.
    bool isReady() const { return next().has_value(); }
    /// The next fetch, which has a place from now on. Only when it is ready.
    std::shared_ptr<Fetch> pop();
    /// How many fetches wait for an origin that has places, whose connections they can use.
    std::size_t countReuses() const;

    /// How much the body of a fetch that has a place now holds.
    void hold(Fetch& fetch, std::size_t bytes);
    /// How much the bodies hold.
    const ByPriority<std::size_t>& heldBytes() const { return heldBytes_; }
    /// Gives back the place that a fetch has, and what it holds.
    void release(Fetch& fetch);

 private:
    struct Next {
        TaskPriority priority;
        FetchLine::Turns::const_iterator turn;
    };
    struct Share {
        std::size_t places = 0;
        ByPriority<std::size_t> heldBytes;
    };

    std::optional<Next> next() const;
    bool isFull(TaskPriority priority) const;
    bool hasShareLeft(const std::string& origin, TaskPriority priority) const;

    const UrlSessionLimits& limits_;
    ByPriority<FetchLine> lines_;
    std::unordered_map<std::string, Share> shares_;  // by origin
    std::size_t places_ = 0;
    ByPriority<std::size_t> heldBytes_;
};

}  // namespace VexmoraSDK::platform
