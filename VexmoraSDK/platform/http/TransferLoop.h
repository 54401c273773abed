// SPDX-License-Identifier: MIT
#pragma once

#include <curl/curl.h>

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "VexmoraSDK/platform/http/CookieJar.h"
#include "VexmoraSDK/platform/http/CurlTransfer.h"
#include "VexmoraSDK/platform/http/Fetch.h"
#include "VexmoraSDK/platform/http/NextDescriptors.h"

namespace VexmoraSDK::platform {

/// Moves the bytes of all transfers, with libcurl. What libcurl holds is kept for good, because
/// letting go of it would wait for names that are being resolved.
class TransferLoop {
 public:
    explicit TransferLoop(const UrlSessionLimits& limits) : limits_(limits) {}

    using Fetches = std::vector<std::shared_ptr<Fetch>>;

    /// Sets libcurl up, if need be. Before each turn, and not at the same time as `wake`. Where
    /// descriptors or memory lack it does not succeed, and transfers that begin fail.
    void open();

    /// Ends the wait of the turn, or else of the next one. Any thread.
    void wake();

    /// Begins these transfers, unless a response was stored while they waited, moves what there is
    /// to move, or else waits for a while or until it is woken, and returns the transfers that
    /// ended, each once, with their outcomes filled in. On one thread at a time.
    Fetches turn(Fetches starting, bool othersWait);

    /// How many transfers are in flight. Between turns.
    std::size_t inFlight() const { return transfers_.size(); }
    /// How much of their bodies they have received.
    std::size_t bodyBytes() const;

 private:
    struct Transfer {
        std::shared_ptr<Fetch> fetch;
        CurlTransfer curl;
    };

    void begin(std::shared_ptr<Fetch> fetch, Fetches& ended);
    void takeDone(Fetches& ended);

    const UrlSessionLimits& limits_;
    CookieJar cookies_;
    CURLM* multi_ = nullptr;
    /// What libcurl opens to resolve a name.
    std::optional<NextDescriptors> resolving_;
    std::unordered_map<CURL*, std::unique_ptr<Transfer>> transfers_;
};

}  // namespace VexmoraSDK::platform
