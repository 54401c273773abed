#include "VexmoraSDK/platform/common/DeliveryThreads.h"

#include <algorithm>
#include <string>
#include <utility>

#include "VexmoraSDK/platform/Fatal.h"
#include "VexmoraSDK/platform/common/WorkerThread.h"

namespace VexmoraSDK::platform {

void DeliveryThreads::run(std::function<void()> job) {
    std::unique_lock lock(mutex_);
    if (stopped_) return;
    jobs_.push_back(std::move(job));
    const std::size_t most = std::clamp(std::thread::hardware_concurrency(), 1u, 4u);
    if (jobs_.size() > idle_ && threads_.size() < most) {
        const auto name = "vexmora-d" + std::to_string(threads_.size());
        threads_.reserve(most);  // no thread is started that could then not be kept
        auto thread = startWorkerThread(name, [this] { work(); });
        if (thread.joinable()) threads_.push_back(std::move(thread));
        if (threads_.empty()) fatalError("no thread to be had");
    }
    // Whoever is woken up takes the lock first.
    lock.unlock();
    changed_.notify_one();
}

void DeliveryThreads::stop() {
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    changed_.notify_all();
    for (auto& thread : threads_)
        finishWorkerThread(thread);
}

void DeliveryThreads::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        ++idle_;
        changed_.wait(lock, [this] { return stopped_ || !jobs_.empty(); });
        --idle_;
        if (stopped_) return;
        auto job = std::move(jobs_.front());
        jobs_.pop_front();
        lock.unlock();
        job();
        job = nullptr;
        lock.lock();
    }
}

}  // namespace VexmoraSDK::platform
