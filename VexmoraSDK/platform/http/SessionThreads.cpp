// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/SessionThreads.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/foundation/WorkerThread.h"

namespace VexmoraSDK::platform {
namespace {

/// The longest time that the exit of the process waits for the threads.
constexpr std::chrono::seconds kMaxExitDelay(1);

/// How many completions of low priority run at once.
std::size_t maxLowCompletions() {
    // Each question reads a file.
    static const std::size_t cores = std::clamp(std::thread::hardware_concurrency(), 1u, 4u);
    return cores;
}

}  // namespace

void SessionThreads::transfer(std::shared_ptr<Fetch> fetch) {
    const std::lock_guard lock(mutex_);
    waiting_.push(std::move(fetch));
    addThreads();
    if (waiting_.isReady()) notifyLeader();
}

void SessionThreads::complete(std::shared_ptr<Fetch> fetch) {
    const std::lock_guard lock(mutex_);
    FetchLine& line = ended_[fetch->priority];
    line.push(std::move(fetch));
    addThreads();
    if (!notifyFollower() && hasLeader_) loop_.wake();
}

void SessionThreads::stop() {
    const auto deadline = std::chrono::steady_clock::now() + kMaxExitDelay;
    std::unique_lock lock(mutex_);
    stopped_ = true;
    if (hasLeader_) loop_.wake();
    while (notifyFollower()) {
    }
    // The turn must have ended, for TLS is taken down after this. It does so without a deadline: it
    // waits for nobody, and what it takes of each transfer is bounded.
    changed_.wait(lock, [this] { return !hasLeader_; });
    const auto isOwn = [](const Worker& worker) {
        return pthread_equal(worker.thread, pthread_self()) != 0;
    };
    changed_.wait_until(lock, deadline, [&] {
        return std::ranges::all_of(
            workers_, [&](const Worker& worker) { return worker.isGone || isOwn(worker); });
    });
    for (const auto& worker : workers_) {
        if (worker.isGone) {
            pthread_join(worker.thread, nullptr);  // It has nothing more to do.
        } else {
            pthread_detach(worker.thread);
        }
    }
}

void SessionThreads::work(Worker& self) {
    std::unique_lock lock(mutex_);
    while (!stopped_) {
        if (const auto priority = nextCompletion()) {
            completeOne(*priority, lock);
        } else if (needsLeader()) {
            leadOnce(lock);
        } else {
            following_.push_back(&self);
            self.notified.wait(lock);
            std::erase(following_, &self);
        }
    }
    self.isGone = true;
    changed_.notify_all();
}

void SessionThreads::completeOne(TaskPriority priority, std::unique_lock<std::mutex>& lock) {
    FetchLine& line = ended_[priority];
    const auto fetch = line.pop(line.turns().begin());
    ++completing_[priority];
    const std::size_t left = ended_[TaskPriority::normal].size() +
                             ended_[TaskPriority::low].size() + (needsLeader() ? 1 : 0);
    for (std::size_t i = 0; i < left && notifyFollower(); ++i) {
    }
    lock.unlock();
    fetch->complete();
    lock.lock();
    --completing_[priority];
    if (fetch->hasPlace) waiting_.release(*fetch);
    if (hasLeader_ && waiting_.isReady()) notifyLeader();
}

void SessionThreads::leadOnce(std::unique_lock<std::mutex>& lock) {
    loop_.open();
    hasLeader_ = true;
    leaderIsNotified_ = false;
    TransferLoop::Fetches starting;
    while (waiting_.isReady())
        starting.push_back(waiting_.pop());
    const std::size_t reuses = waiting_.countReuses();
    const auto heldBytes = waiting_.heldBytes();
    lock.unlock();
    auto ended = loop_.turn(std::move(starting), reuses, heldBytes);
    lock.lock();
    hasLeader_ = false;
    loop_.forEachBody([this](Fetch& fetch, std::size_t bytes) { waiting_.hold(fetch, bytes); });
    for (auto& fetch : ended) {
        waiting_.hold(*fetch, fetch->response.body.size());
        FetchLine& line = ended_[fetch->priority];
        line.push(std::move(fetch));
    }
    addThreads();
}

std::optional<TaskPriority> SessionThreads::nextCompletion() const {
    constexpr auto kNormal = TaskPriority::normal;
    constexpr auto kLow = TaskPriority::low;
    // A thread has to be left to lead, unless there is only one.
    const std::size_t completing = completing_[kNormal] + completing_[kLow];
    if (completing + 1 >= workers_.size() && workers_.size() > 1) return std::nullopt;
    if (!ended_[kNormal].isEmpty()) return kNormal;
    if (!ended_[kLow].isEmpty() && completing_[kLow] < maxLowCompletions()) return kLow;
    return std::nullopt;
}

bool SessionThreads::needsLeader() const {
    return !hasLeader_ && (loop_.hasTransfers() || waiting_.isReady());
}

void SessionThreads::notifyLeader() {
    if (std::exchange(leaderIsNotified_, true)) return;
    if (hasLeader_) {
        loop_.wake();
    } else {
        notifyFollower();
    }
}

bool SessionThreads::notifyFollower() {
    if (following_.empty()) return false;
    following_.back()->notified.notify_one();
    following_.pop_back();
    return true;
}

void SessionThreads::addThreads() {
    const auto completions = [this](TaskPriority priority) {
        return completing_[priority] + ended_[priority].size();
    };
    const std::size_t low = std::min(completions(TaskPriority::low), maxLowCompletions());
    const std::size_t wanted =
        std::min(low + completions(TaskPriority::normal), maxLowCompletions() + 1) + 1;
    while (!stopped_ && workers_.size() < wanted) {
        Worker& worker = workers_.emplace_back();
        const auto thread = startWorkerThread("vexmora-" + std::to_string(workers_.size() - 1),
                                              [this, &worker] { work(worker); });
        if (!thread) {
            workers_.pop_back();
            break;
        }
        worker.thread = *thread;
    }
    if (!stopped_ && workers_.empty()) fatalError("no thread to be had");
}

}  // namespace VexmoraSDK::platform
