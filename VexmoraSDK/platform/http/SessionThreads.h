#pragma once

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "VexmoraSDK/platform/http/TransferLoop.h"

namespace VexmoraSDK::platform {

/// The threads of the session, as leader and followers. The leader moves the bytes of all
/// transfers. When one has ended it completes that one itself, and a follower takes the lead if
/// there are others: no completion waits for a thread to wake up, and no transfer for a completion
/// that decodes a picture. As many complete at once as there are cores, at most four, and one more
/// leads. None is started before there is work for it; where there is none to be had, those that
/// run do the work, and a process that has none at all is stopped.
class SessionThreads {
 public:
    /// Has the transfer made and completed. Any thread.
    void start(std::shared_ptr<Transfer> transfer);

    /// Has the transfer, whose outcome is known, completed. Any thread.
    void complete(std::shared_ptr<Transfer> transfer);

    /// Lets the running completions finish and no further one begin; transfers in flight stay as
    /// they are. From one of the threads too.
    void stop();

 private:
    /// False when that is not possible.
    bool begin(const std::shared_ptr<Transfer>& transfer);
    void work();
    // The mutex is held in all of these.
    void workOnce(std::unique_lock<std::mutex>& lock);
    bool mayComplete() const;
    bool needsLeader() const;
    bool hasLeader() const;
    void addThreads();

    TransferLoop loop_;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::shared_ptr<Transfer>> ended_;
    std::vector<std::thread> threads_;
    std::size_t idle_ = 0;
    std::size_t completing_ = 0;
    /// Whether there are transfers to move.
    bool moves_ = false;
    std::thread::id leader_;
    bool stopped_ = false;
};

}  // namespace VexmoraSDK::platform
