// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QTimer>
#include <boost/json.hpp>
#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace VexmoraSDK::benchmarks {

using Milliseconds = std::chrono::duration<double, std::milli>;

/// Processor time of the calling thread.
Milliseconds threadTime();
/// Processor time of all threads.
Milliseconds processTime();
/// How often threads of this process were woken up.
long wakeUps();

/// Time since its construction, and the work of the calling thread and of all threads meanwhile.
class Stopwatch {
 public:
    Milliseconds passed() const { return std::chrono::steady_clock::now() - begin_; }
    Milliseconds worked() const { return threadTime() - workedBefore_; }
    Milliseconds workedByAll() const { return processTime() - workedByAllBefore_; }
    long wakeUps() const { return benchmarks::wakeUps() - wakeUpsBefore_; }

 private:
    long wakeUpsBefore_ = benchmarks::wakeUps();
    Milliseconds workedByAllBefore_ = processTime();
    Milliseconds workedBefore_ = threadTime();
    std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

/// How long the main thread keeps the event loop waiting, in processor time. A timer of one
/// millisecond ends each stall.
class MainThreadStalls {
 public:
    MainThreadStalls();

    /// Ends the current stall.
    void tick();
    Milliseconds longest() const { return longest_; }
    /// The frames that a display of 120 Hz lost by stalls.
    int lostFrames() const { return lostFrames_; }

 private:
    QTimer timer_;
    Milliseconds last_ = threadTime();
    Milliseconds longest_{0};
    int lostFrames_ = 0;
};

/// Runs the event loop until `condition` holds. Ends the program if that takes minutes.
void runUntil(const std::function<bool()>& condition);
/// Runs all events that are pending.
void settle();

/// Measured values, in the order in which they were added.
class Samples {
 public:
    void add(Milliseconds value) { values_.push_back(value.count()); }
    void add(long count) { values_.push_back(static_cast<double>(count)); }
    boost::json::value json() const { return boost::json::value_from(values_); }

 private:
    std::vector<double> values_;
};

/// The bytes in use on the heap.
std::size_t liveHeap();
/// "Pss" or "Rss" of this process, in bytes.
std::size_t residentBytes(const std::string& which);
/// The processor time of this process's threads by their names, in milliseconds.
boost::json::object threads();

}  // namespace VexmoraSDK::benchmarks
