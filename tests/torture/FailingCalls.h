// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

/// Counts the calls of the process that can fail, on all its threads, from `begin` on, and has one
/// of them fail: memory, files, sockets, threads, libcurl and zlib.
namespace VexmoraSDK::FailingCalls {

/// It lies in memory that a process shares with its forks.
struct Record {
    std::atomic<long> calls;
    std::atomic<const char*> failed;  ///< the name of the call; null until it has failed
};

/// The `nth` call fails, counted from 1; none does when it is 0.
void begin(long nth, Record& record);

/// While this lives the calling thread is the host's: its calls neither count nor fail.
class Spared {
 public:
    Spared();
    ~Spared();
    Spared(const Spared&) = delete;
    Spared& operator=(const Spared&) = delete;
};

/// Counts libcurl's allocations among the calls. Called before its first use.
void countMemoryOfLibcurl();

}  // namespace VexmoraSDK::FailingCalls
