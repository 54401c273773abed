// SPDX-License-Identifier: MIT
#include "benchmarks/Measure.h"

#include <malloc.h>
#include <sys/resource.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace VexmoraSDK::benchmarks {

namespace {

Milliseconds timeOf(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace

Milliseconds threadTime() {
    return timeOf(CLOCK_THREAD_CPUTIME_ID);
}

Milliseconds processTime() {
    return timeOf(CLOCK_PROCESS_CPUTIME_ID);
}

long wakeUps() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_nvcsw;
}

MainThreadStalls::MainThreadStalls() {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.callOnTimeout([this] { tick(); });
    timer_.start(1);
}

void MainThreadStalls::tick() {
    constexpr Milliseconds kFrame(1000.0 / 120);
    const auto now = threadTime();
    longest_ = std::max(longest_, now - last_);
    lostFrames_ += static_cast<int>((now - last_) / kFrame);
    last_ = now;
}

void runUntil(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(std::chrono::minutes(5));
    while (!condition()) {
        if (deadline.hasExpired()) {
            std::cerr << "what was waited for did not happen\n";
            std::_Exit(1);
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

std::size_t liveHeap() {
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

std::size_t residentBytes(const std::string& which) {
    std::ifstream file("/proc/self/smaps_rollup");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(which + ':')) return std::stoul(line.substr(which.size() + 1)) * 1024;
    }
    return 0;
}

boost::json::object threads() {
    boost::json::object found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/task")) {
        std::string name;
        std::getline(std::ifstream(entry.path() / "comm"), name);
        double nanoseconds = 0;
        std::ifstream(entry.path() / "schedstat") >> nanoseconds;
        auto& time = found[name];
        time = (time.is_null() ? 0 : time.as_double()) + nanoseconds / 1e6;
    }
    return found;
}

}  // namespace VexmoraSDK::benchmarks
