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
/// How often threads of this process went to sleep and were woken up.
long wakeUps();

/// Time that passed, and what the calling thread and all threads did meanwhile.
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

/// How long the main thread works without giving the event loop a chance, in processor time: a
/// timer fires each millisecond that it can.
class MainThreadStalls {
 public:
    MainThreadStalls();

    /// Ends the last stretch.
    void tick();
    Milliseconds longest() const { return longest_; }
    /// Frames of a display at 120 Hz that had no chance to be made.
    int lostFrames() const { return lostFrames_; }

 private:
    QTimer timer_;
    Milliseconds last_ = threadTime();
    Milliseconds longest_{0};
    int lostFrames_ = 0;
};

/// Runs the event loop until `condition` holds. Ends the program when that takes minutes.
void runUntil(const std::function<bool()>& condition);
/// Runs what the event loop has to do now.
void settle();

/// Values, in the order in which they came.
class Samples {
 public:
    void add(Milliseconds value) { values_.push_back(value.count()); }
    void add(long count) { values_.push_back(static_cast<double>(count)); }
    boost::json::value json() const { return boost::json::value_from(values_); }

 private:
    std::vector<double> values_;
};

/// Bytes on the heap that are in use.
std::size_t liveHeap();
/// "Pss" or "Rss" of this process, in bytes.
std::size_t residentBytes(const std::string& which);
/// Names of this process's threads with the processor time that those of the name took, in
/// milliseconds.
boost::json::object threads();

}  // namespace VexmoraSDK::benchmarks
