#include "benchmarks/Measure.h"

#include <malloc.h>
#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

namespace VexmoraSDK::benchmarks {

Milliseconds threadTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

Stretches::Stretches() {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.callOnTimeout([this] { tick(); });
    timer_.start(1);
}

void Stretches::tick() {
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

boost::json::value Samples::json() const {
    auto sorted = values_;
    std::ranges::sort(sorted);
    const auto at = [&](double part) {
        const auto last = static_cast<double>(sorted.size() - 1);
        return sorted[static_cast<std::size_t>(std::lround(part * last))];
    };
    return {{"median", at(0.5)}, {"p99", at(0.99)}, {"count", sorted.size()}};
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
        std::ifstream file(entry.path() / "stat");
        std::string stat((std::istreambuf_iterator<char>(file)), {});
        const auto open = stat.find('(');
        const auto close = stat.rfind(')');
        std::istringstream fields(stat.substr(close + 2));
        std::string skipped;
        for (int i = 0; i < 11; ++i)
            fields >> skipped;
        double user = 0;
        double system = 0;
        fields >> user >> system;
        const auto name = stat.substr(open + 1, close - open - 1);
        found[name] = (user + system) * 1000 / static_cast<double>(sysconf(_SC_CLK_TCK));
    }
    return found;
}

}  // namespace VexmoraSDK::benchmarks
