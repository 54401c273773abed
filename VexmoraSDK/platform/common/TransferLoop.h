#pragma once

#include <curl/curl.h>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>

#include "VexmoraSDK/platform/common/HttpExchange.h"

namespace VexmoraSDK::platform {

/// The thread that moves the bytes of all transfers, with libcurl, and nothing else. It is started
/// with the first transfer.
class TransferLoop {
 public:
    using Sink = std::function<void(std::shared_ptr<Transfer>)>;

    /// `finished` gets each transfer once, with its outcome filled in, on the loop's thread or
    /// inside `start`. It must not wait.
    explicit TransferLoop(Sink finished);

    /// Starts a transfer as soon as fewer than the most are in flight. Any thread.
    void start(std::shared_ptr<Transfer> transfer);

    /// Ends the thread; transfers in flight stay as they are. What libcurl holds is kept, because
    /// letting go of it would wait for names that are being resolved. Any thread.
    void stop();

 private:
    bool wakeThread();
    void run();
    /// False when the loop is to end.
    bool beginWaiting();
    void begin(std::shared_ptr<Transfer> transfer);
    void finishDone();

    const Sink finished_;

    std::mutex mutex_;
    std::deque<std::shared_ptr<Transfer>> waiting_;
    // Set before the thread starts, and then for good.
    CURLSH* cookies_ = nullptr;
    CURLM* multi_ = nullptr;
    std::thread thread_;
    bool stopped_ = false;

    // The thread's own.
    std::unordered_map<CURL*, std::unique_ptr<HttpExchange>> exchanges_;
};

}  // namespace VexmoraSDK::platform
