#pragma once

#include <curl/curl.h>

#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "VexmoraSDK/platform/common/Transfer.h"

namespace VexmoraSDK::platform {

/// The thread that moves the bytes of all transfers, with libcurl, and nothing else. It is started
/// with the first transfer.
class TransferLoop {
 public:
    using Sink = std::function<void(std::shared_ptr<Transfer>)>;

    /// `finished` gets each transfer once, on the loop's thread, with its outcome filled in.
    explicit TransferLoop(Sink finished);

    /// Starts a transfer. Any thread.
    void start(std::shared_ptr<Transfer> transfer);

    /// Ends the thread; transfers in flight stay as they are. What libcurl holds is kept, because
    /// letting go of it would wait for names that are being resolved. Any thread.
    void stop();

 private:
    struct Exchange;

    void run();
    void takeWaiting();
    void begin(std::shared_ptr<Transfer> transfer);
    void finishDone();

    const Sink finished_;
    CURLM* const multi_;
    CURLSH* const cookies_;

    std::mutex mutex_;
    std::vector<std::shared_ptr<Transfer>> waiting_;
    bool stopped_ = false;
    std::thread thread_;
};

}  // namespace VexmoraSDK::platform
