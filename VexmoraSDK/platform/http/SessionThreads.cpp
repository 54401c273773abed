#include "VexmoraSDK/platform/http/SessionThreads.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/http/WorkerThread.h"

namespace VexmoraSDK::platform {

void SessionThreads::start(std::shared_ptr<Transfer> transfer) {
    if (begin(transfer)) return;
    transfer->fail(CURLE_FAILED_INIT, curl_easy_strerror(CURLE_FAILED_INIT));
    complete(std::move(transfer));
}

bool SessionThreads::begin(const std::shared_ptr<Transfer>& transfer) {
    std::unique_lock lock(mutex_);
    const std::size_t waiting = loop_.add(transfer);
    if (waiting == 0) return false;
    moves_ = true;
    addThreads();
    const bool led = hasLeader();
    // Whoever is woken up takes the lock first.
    lock.unlock();
    // Where others wait already, somebody has been told, or looks again as soon as there is room.
    if (waiting > 1) return true;
    if (led) return loop_.wake() || !loop_.remove(transfer);
    changed_.notify_one();
    return true;
}

void SessionThreads::complete(std::shared_ptr<Transfer> transfer) {
    const std::lock_guard lock(mutex_);
    ended_.push_back(std::move(transfer));
    addThreads();
    if (idle_ > 0) {
        changed_.notify_one();
    } else if (hasLeader()) {
        loop_.wake();
    }
}

void SessionThreads::stop() {
    std::thread::id sleeper;
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
        if (hasLeader() && !loop_.wake()) sleeper = leader_;
    }
    changed_.notify_all();
    for (auto& thread : threads_) {
        // A sleep that cannot be ended must not hold up whoever waits for the end of the thread.
        if (thread.joinable() && thread.get_id() == sleeper) {
            thread.detach();
        } else {
            finishWorkerThread(thread);
        }
    }
}

void SessionThreads::work() {
    std::unique_lock lock(mutex_);
    while (!stopped_)
        workOnce(lock);
}

void SessionThreads::workOnce(std::unique_lock<std::mutex>& lock) {
    if (!ended_.empty() && mayComplete()) {
        auto transfer = std::move(ended_.front());
        ended_.pop_front();
        ++completing_;
        const std::size_t left = ended_.size() + (needsLeader() ? 1 : 0);
        const std::size_t helpers = std::min(idle_, left);
        lock.unlock();
        for (std::size_t i = 0; i < helpers; ++i)
            changed_.notify_one();
        transfer->complete();
        transfer.reset();
        lock.lock();
        --completing_;
    } else if (needsLeader()) {
        leader_ = std::this_thread::get_id();
        lock.unlock();
        auto ended = loop_.turn();
        lock.lock();
        leader_ = {};
        moves_ = loop_.isBusy();
        std::ranges::move(ended, std::back_inserter(ended_));
        addThreads();
    } else {
        ++idle_;
        changed_.wait(lock);
        --idle_;
    }
}

/// Somebody has to be left to lead, unless nobody else is to be had.
bool SessionThreads::mayComplete() const {
    return completing_ + 1 < threads_.size() || threads_.size() == 1;
}

bool SessionThreads::needsLeader() const {
    return moves_ && !hasLeader();
}

bool SessionThreads::hasLeader() const {
    return leader_ != std::thread::id();
}

void SessionThreads::addThreads() {
    // Each question reads a file.
    static const std::size_t cores = std::clamp(std::thread::hardware_concurrency(), 1u, 4u);
    const std::size_t wanted = std::min(completing_ + ended_.size(), cores) + 1;
    threads_.reserve(cores + 1);  // no thread is started that could then not be kept
    while (!stopped_ && threads_.size() < wanted) {
        auto thread =
            startWorkerThread("vexmora-" + std::to_string(threads_.size()), [this] { work(); });
        if (!thread.joinable()) break;
        threads_.push_back(std::move(thread));
    }
    if (!stopped_ && threads_.empty()) fatalError("no thread to be had");
}

}  // namespace VexmoraSDK::platform
