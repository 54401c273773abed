#pragma once

#include <curl/curl.h>

#include <deque>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "VexmoraSDK/platform/http/HttpExchange.h"

namespace VexmoraSDK::platform {

/// Moves the bytes of all transfers, with libcurl. What libcurl holds is kept for good, because
/// letting go of it would wait for names that are being resolved.
class TransferLoop {
 public:
    /// Has the transfer begin in a later turn, as soon as fewer than the most are in flight.
    /// Returns how many wait to begin; 0, and nothing done, when that is not possible. Any thread.
    std::size_t add(std::shared_ptr<Transfer> transfer);
    /// Undoes an `add`. False when the transfer has begun. Any thread.
    bool remove(const std::shared_ptr<Transfer>& transfer);
    /// Whether there are transfers to move. Between turns.
    bool isBusy();

    /// Ends the wait of a turn, or else that of the next one. False when that is not possible. Any
    /// thread, after an `add`.
    bool wake();

    /// Moves what there is to move, or waits until there is, and returns the transfers that ended,
    /// each once, with their outcomes filled in. On one thread at a time.
    std::vector<std::shared_ptr<Transfer>> turn();

 private:
    using Ended = std::vector<std::shared_ptr<Transfer>>;

    void beginWaiting(Ended& ended);
    void begin(std::shared_ptr<Transfer> transfer, Ended& ended);
    void takeDone(Ended& ended);

    std::mutex mutex_;
    std::deque<std::shared_ptr<Transfer>> waiting_;
    // Set before the first turn, and then for good.
    CURLSH* cookies_ = nullptr;
    CURLM* multi_ = nullptr;

    // Of whoever takes the turn.
    std::unordered_map<CURL*, std::unique_ptr<HttpExchange>> exchanges_;
};

}  // namespace VexmoraSDK::platform
