// SPDX-License-Identifier: MIT
#include "benchmarks/Floor.h"

#include <curl/curl.h>
#include <pthread.h>

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtGui/QImageReader>
#include <boost/json.hpp>
#include <utility>

namespace VexmoraSDK::benchmarks {

struct Floor::Job {
    std::string address;
    Done done;
    Ad ad;
    bool isPicture = false;
    std::string body{};
};

namespace {

class HandOver : public QEvent {
 public:
    explicit HandOver(std::unique_ptr<Floor::Job> handedOver)
        : QEvent(User), job(std::move(handedOver)) {}
    std::unique_ptr<Floor::Job> job;
};

std::size_t append(const char* bytes, std::size_t, std::size_t count, void* job) {
    static_cast<Floor::Job*>(job)->body.append(bytes, count);
    return count;
}

std::string text(const boost::json::object& ad, std::string_view name) {
    const auto* member = ad.if_contains(name);
    return member ? std::string(member->as_string()) : std::string();
}

}  // namespace

Floor::Floor() : multi_(curl_multi_init()) {
    // The SDK opens as many connections.
    curl_multi_setopt(multi_, CURLMOPT_MAX_TOTAL_CONNECTIONS, 64L);
    io_ = std::thread([this] { transfer(); });
    pthread_setname_np(io_.native_handle(), "floor-io");
    for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i) {
        auto& worker = workers_.emplace_back([this] { decode(); });
        pthread_setname_np(worker.native_handle(), "floor-worker");
    }
}

Floor::~Floor() {
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

void Floor::fetch(std::string address, Done done) {
    request(std::make_unique<Job>(Job{std::move(address), std::move(done), {}}));
}

void Floor::request(JobPointer job) {
    {
        const std::lock_guard lock(requests_.mutex);
        requests_.waiting.push_back(std::move(job));
    }
    curl_multi_wakeup(multi_);
}

void Floor::transfer() {
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
        while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
            CURL* handle = message->easy_handle;
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
        curl_multi_poll(multi_, nullptr, 0, 60'000, nullptr);
    }
}

void Floor::begin(JobPointer job) {
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

void Floor::decode() {
    std::unique_lock lock(pictures_.mutex);
    while (true) {
        pictures_.changed.wait(lock,
                               [&] { return pictures_.stopped || !pictures_.waiting.empty(); });
        if (pictures_.stopped) return;
        auto job = std::move(pictures_.waiting.front());
        pictures_.waiting.pop_front();
        lock.unlock();
        QByteArray bytes =
            QByteArray::fromRawData(job->body.data(), static_cast<qsizetype>(job->body.size()));
        QBuffer buffer(&bytes);
        QImageReader(&buffer).read(&job->ad.picture);
        handOver(std::move(job));
        lock.lock();
    }
}

void Floor::handOver(JobPointer job) {
    QCoreApplication::postEvent(this, new HandOver(std::move(job)));
}

bool Floor::event(QEvent* event) {
    if (event->type() != QEvent::User) return QObject::event(event);
    auto job = std::move(static_cast<HandOver*>(event)->job);
    if (job->isPicture) {
        job->done(std::move(job->ad));
        return true;
    }
    const auto answer = boost::json::parse(job->body);
    const auto& ad = answer.as_array().front().as_object();
    job->ad = {text(ad, "clickUrl"), text(ad, "title"), text(ad, "description"),
               text(ad, "displayName"), QImage()};
    job->address = text(ad, "bannerUrl");
    job->isPicture = true;
    job->body.clear();
    request(std::move(job));
    return true;
}

}  // namespace VexmoraSDK::benchmarks
