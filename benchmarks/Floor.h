// SPDX-License-Identifier: MIT
#pragma once

#include <curl/curl.h>
#include <pthread.h>

#include <algorithm>
#include <boost/json.hpp>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace VexmoraSDK::benchmarks {

/// The least that an app needs to fetch an ad without the SDK: libcurl on one thread, worker
/// threads that decode pictures, and one task of the main thread for each result. It handles no
/// errors.
template <class Picture>
class Floor {
 public:
    struct Ad {
        std::string clickUrl;
        std::string title;
        std::string description;
        std::string displayName;
        Picture picture;
    };
    using Done = std::function<void(Ad)>;
    using Decode = Picture (*)(const std::string& bytes);
    using RunOnMainThread = std::function<void(std::function<void()>)>;

    /// `decode` is called on a worker, `runOnMainThread` on any thread.
    Floor(Decode decode, RunOnMainThread runOnMainThread)
        : decode_(decode), runOnMainThread_(std::move(runOnMainThread)), multi_(curl_multi_init()) {
        // As many connections as the SDK opens.
        curl_multi_setopt(multi_, CURLMOPT_MAX_TOTAL_CONNECTIONS, 64L);
        io_ = std::thread([this] { transfer(); });
        pthread_setname_np(io_.native_handle(), "floor-io");
        for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i) {
            auto& worker = workers_.emplace_back([this] { decodePictures(); });
            pthread_setname_np(worker.native_handle(), "floor-worker");
        }
    }
    Floor(const Floor&) = delete;
    Floor& operator=(const Floor&) = delete;
    ~Floor() {
        for (auto* jobs : {&requests_, &pictures_}) {
            const std::lock_guard lock(jobs->mutex);
            jobs->stopped = true;
            jobs->changed.notify_all();
        }
        curl_multi_wakeup(multi_);
        io_.join();
        for (auto& worker : workers_)
            worker.join();
        for (auto* handle : idleHandles_)
            curl_easy_cleanup(handle);
        curl_multi_cleanup(multi_);
    }

    /// Fetches the ad at `address`, then its picture; `done` runs on the main thread. Main thread.
    void fetch(std::string address, Done done) {
        request(std::make_unique<Job>(Job{std::move(address), std::move(done), {}}));
    }

 private:
    struct Job {
        std::string address;
        Done done;
        Ad ad;
        bool isPicture = false;
        std::string body{};
    };
    using JobPointer = std::unique_ptr<Job>;

    /// A queue of jobs that wait for a thread.
    struct Jobs {
        std::mutex mutex;
        std::condition_variable changed;
        std::deque<JobPointer> waiting;
        bool stopped = false;
    };

    void request(JobPointer job) {
        {
            const std::lock_guard lock(requests_.mutex);
            requests_.waiting.push_back(std::move(job));
        }
        curl_multi_wakeup(multi_);
    }

    void transfer() {
        while (true) {
            {
                std::unique_lock lock(requests_.mutex);
                if (requests_.stopped) return;
                while (!requests_.waiting.empty()) {
                    auto job = std::move(requests_.waiting.front());
                    requests_.waiting.pop_front();
                    lock.unlock();
                    begin(std::move(job));
                    lock.lock();
                }
            }
            int running = 0;
            curl_multi_perform(multi_, &running);
            int left = 0;
            while (const CURLMsg* message = curl_multi_info_read(multi_, &left))
                finishTransfer(message->easy_handle);
            curl_multi_poll(multi_, nullptr, 0, 60'000, nullptr);
        }
    }

    void begin(JobPointer job) {
        CURL* handle = nullptr;
        if (idleHandles_.empty()) {
            handle = curl_easy_init();
            curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
            curl_easy_setopt(handle, CURLOPT_ACCEPT_ENCODING, "");
            curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 1L);
            curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, append);
        } else {
            handle = idleHandles_.back();
            idleHandles_.pop_back();
        }
        curl_easy_setopt(handle, CURLOPT_URL, job->address.c_str());
        curl_easy_setopt(handle, CURLOPT_WRITEDATA, job.get());
        curl_easy_setopt(handle, CURLOPT_PRIVATE, job.release());
        curl_multi_add_handle(multi_, handle);
    }

    static std::size_t append(const char* bytes, std::size_t, std::size_t count, void* job) {
        static_cast<Job*>(job)->body.append(bytes, count);
        return count;
    }

    void finishTransfer(CURL* handle) {
        Job* done = nullptr;
        curl_easy_getinfo(handle, CURLINFO_PRIVATE, &done);
        curl_multi_remove_handle(multi_, handle);
        idleHandles_.push_back(handle);
        JobPointer job(done);
        if (job->isPicture) {
            const std::lock_guard lock(pictures_.mutex);
            pictures_.waiting.push_back(std::move(job));
            pictures_.changed.notify_one();
        } else {
            handOver(std::move(job));
        }
    }

    void decodePictures() {
        std::unique_lock lock(pictures_.mutex);
        while (true) {
            pictures_.changed.wait(lock,
                                   [&] { return pictures_.stopped || !pictures_.waiting.empty(); });
            if (pictures_.stopped) return;
            auto job = std::move(pictures_.waiting.front());
            pictures_.waiting.pop_front();
            lock.unlock();
            job->ad.picture = decode_(job->body);
            handOver(std::move(job));
            lock.lock();
        }
    }

    void handOver(JobPointer job) {
        runOnMainThread_([this, job = job.release()] { receive(JobPointer(job)); });
    }

    void receive(JobPointer job) {
        if (job->isPicture) return job->done(std::move(job->ad));
        const auto response = boost::json::parse(job->body);
        const auto& ad = response.as_array().front().as_object();
        job->ad = {text(ad, "clickUrl"),
                   text(ad, "title"),
                   text(ad, "description"),
                   text(ad, "displayName"),
                   {}};
        job->address = text(ad, "bannerUrl");
        job->isPicture = true;
        job->body.clear();
        request(std::move(job));
    }

    static std::string text(const boost::json::object& ad, std::string_view name) {
        const auto* member = ad.if_contains(name);
        return member ? std::string(member->as_string()) : std::string();
    }

    const Decode decode_;
    const RunOnMainThread runOnMainThread_;
    CURLM* const multi_;
    std::vector<CURL*> idleHandles_;
    Jobs requests_;
    Jobs pictures_;
    std::thread io_;
    std::vector<std::thread> workers_;
};

}  // namespace VexmoraSDK::benchmarks
