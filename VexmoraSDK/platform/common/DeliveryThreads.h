#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace VexmoraSDK::platform {

/// The few threads on which completions run, as many as the cores, at most four. None is started
/// before there is work for it; where there is none to be had, those that run do the work, and a
/// process that has none at all is stopped.
class DeliveryThreads {
 public:
    /// Runs `job`, and lets go of what it holds, on one of the threads. Jobs begin in the order of
    /// the calls. Any thread.
    void run(std::function<void()> job);

    /// Lets the running jobs finish and no further one begin. From one of the threads too.
    void stop();

 private:
    void work();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<void()>> jobs_;
    std::vector<std::thread> threads_;
    std::size_t idle_ = 0;
    bool stopped_ = false;
};

}  // namespace VexmoraSDK::platform
