// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtGui/QImage>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace VexmoraSDK::benchmarks {

/// The least that an app needs to show an ad without the SDK: libcurl on one thread, worker threads
/// that decode pictures, and one event of the main thread for each result. It handles no errors.
class Floor : public QObject {
 public:
    struct Ad {
        std::string clickUrl;
        std::string title;
        std::string description;
        std::string displayName;
        QImage picture;
    };
    using Done = std::function<void(Ad)>;

    Floor();
    ~Floor() override;

    /// Fetches the ad at `address`, then its picture; `done` runs on the main thread. Main thread.
    void fetch(std::string address, Done done);

    struct Job;

 protected:
    bool event(QEvent* event) override;

 private:
    using JobPointer = std::unique_ptr<Job>;

    /// A queue of jobs that wait for a thread.
    struct Jobs {
        std::mutex mutex;
        std::condition_variable changed;
        std::deque<JobPointer> waiting;
        bool stopped = false;
    };

    void request(JobPointer job);
    void transfer();
    void begin(JobPointer job);
    void decode();
    void handOver(JobPointer job);

    void* const multi_;
    std::vector<void*> idleHandles_;
    Jobs requests_;
    Jobs pictures_;
    std::thread io_;
    std::vector<std::thread> workers_;
};

}  // namespace VexmoraSDK::benchmarks
