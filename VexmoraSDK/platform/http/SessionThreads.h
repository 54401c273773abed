// SPDX-License-Identifier: MIT
#pragma once

#include <pthread.h>

#include <condition_variable>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "VexmoraSDK/platform/http/TransferLoop.h"
#include "VexmoraSDK/platform/http/TransferQueue.h"

namespace VexmoraSDK::platform {

/// The threads of the session, as leader and followers.
///
/// | a thread that is | does this                      | until                                   |
/// |------------------|--------------------------------|-----------------------------------------|
/// | following        | nothing                        | it is notified of work                  |
/// | leading          | one turn of the loop, in which | transfers have ended, or it is woken    |
/// |                  | the bytes of all are moved     |                                         |
/// | completing       | one completion                 | that has returned                       |
/// | gone             | nothing, for good              |                                         |
///
/// After each of these a thread is gone if the session was stopped; else it completes if a
/// completion waits and another thread is left to lead; else it leads if there are transfers and no
/// thread leads; else it follows. So the thread that got the last byte of a response completes it
/// without waking another, which takes the lead only if there are further transfers, and no
/// transfer waits for a completion that decodes a picture.
///
/// Completions of low priority come after the others, and origins take turns. As many of them run
/// at once as there are cores, at most four; one more thread is for the others, and one leads. A
/// thread is started when there is work for it; where the system gives none, those that run do the
/// work, and a process without any is stopped.
class SessionThreads {
 public:
    explicit SessionThreads(const UrlSessionLimits& limits) : loop_(limits), waiting_(limits) {}

    /// Runs a transfer and its completion. Any thread.
    void transfer(std::shared_ptr<Fetch> fetch);

    /// Runs the completion of a fetch whose outcome is known. Any thread.
    void complete(std::shared_ptr<Fetch> fetch);

    /// Ends the turn of the loop, lets no further completion begin, and returns when the running
    /// ones have, or a second after the call. Threads that take longer, and the calling one if it
    /// is one of these, are detached and left behind; what they use is never destroyed.
    void stop();

 private:
    struct Worker {
        pthread_t thread{};
        std::condition_variable notified;
        bool isGone = false;
    };

    void work(Worker& self);
    // The mutex is held in all of these.
    void completeOne(TaskPriority priority, std::unique_lock<std::mutex>& lock);
    void leadOnce(std::unique_lock<std::mutex>& lock);
    std::optional<TaskPriority> nextCompletion() const;
    bool needsLeader() const;
    void addThreads();
    void notifyLeader();
    /// Notifies the thread that has followed for the shortest time, because its caches are the
    /// warmest. False if none follows.
    bool notifyFollower();

    TransferLoop loop_;

    std::mutex mutex_;
    /// Tells `stop` that a turn has ended or a thread is gone.
    std::condition_variable changed_;
    std::list<Worker> workers_;
    TransferQueue waiting_;
    ByPriority<FetchLine> ended_;
    ByPriority<std::size_t> completing_;
    std::vector<Worker*> following_;  // the latest comes last
    bool hasLeader_ = false;
    /// Whether a thread has been notified to lead since the last turn began.
    bool leaderIsNotified_ = false;
    bool stopped_ = false;
};

}  // namespace VexmoraSDK::platform
