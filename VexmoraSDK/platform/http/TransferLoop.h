// SPDX-License-Identifier: MIT
#pragma once

#include <curl/curl.h>

#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "VexmoraSDK/platform/http/ByPriority.h"
#include "VexmoraSDK/platform/http/CookieJar.h"
#include "VexmoraSDK/platform/http/CurlTransfer.h"
#include "VexmoraSDK/platform/http/EasyHandles.h"
#include "VexmoraSDK/platform/http/Fetch.h"
#include "VexmoraSDK/platform/http/NextDescriptors.h"

namespace VexmoraSDK::platform {

/// Moves the bytes of all transfers, with libcurl. Its multi handle is never cleaned up, because
/// that would wait for names that are being resolved.
class TransferLoop {
 public:
    explicit TransferLoop(const UrlSessionLimits& limits) : limits_(limits) {}

    using Fetches = std::vector<std::shared_ptr<Fetch>>;

    /// Makes libcurl's multi handle unless there is one; without descriptors or memory there is
    /// none, and transfers that begin fail. Called before each turn, never beside `wake`.
    void open();

    /// Ends the wait of the turn, or else of the next one. Any thread.
    void wake();

    /// What the bodies of all fetches that have a place hold at the beginning of a turn.
    using HeldBytes = ByPriority<std::size_t>;

    /// Begins these transfers, but for those whose response was stored while they waited, and moves
    /// bytes; where no transfer ends by that, waits for more bytes or for `wake`. Returns those
    /// that ended, each once, with their outcomes. `reuses` is how many transfers will yet begin
    /// that can use a connection which is there.
    ///
    /// Once woken a turn is soon over, whatever servers send: libcurl takes at most 100 buffers of
    /// 16 KiB of a transfer before it looks at the next, names are resolved in threads of their
    /// own, and the callbacks take time in proportion to the bytes. On one thread at a time.
    Fetches turn(Fetches starting, std::size_t reuses, const HeldBytes& heldBytes);

    /// Whether transfers are in flight. Between turns.
    bool hasTransfers() const { return !transfers_.empty(); }
    /// Calls `use` with each fetch in flight and the size of the body that it has so far. Between
    /// turns.
    template <class Use>
    void forEachBody(Use use) const {
        for (const auto& [easy, transfer] : transfers_)
            use(*transfer->fetch, transfer->curl.response().body.size());
    }

 private:
    struct Transfer {
        std::shared_ptr<Fetch> fetch;
        CurlTransfer curl;
    };

    void begin(std::shared_ptr<Fetch> fetch, Fetches& ended);
    void takeDone(Fetches& ended);

    const UrlSessionLimits& limits_;
    CookieJar cookies_;
    HeldBytes heldBytes_;
    CURLM* multi_ = nullptr;
    /// The descriptors that libcurl opens to resolve names.
    std::optional<NextDescriptors> resolving_;
    EasyHandles easyHandles_;
    std::unordered_map<CURL*, std::unique_ptr<Transfer>> transfers_;
};

}  // namespace VexmoraSDK::platform
