// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

/// Calls of the process that can fail, of all its threads: memory, files, sockets, threads,
/// libcurl, libplist and zlib. They are counted from `begin` on, and one of them does fail.
namespace VexmoraSDK::FailingCalls {

/// In memory that a process shares with those it forks off.
struct Record {
    std::atomic<long> calls;
    std::atomic<const char*> failed;  ///< the name of the call; null until it has failed
};

/// `nth` is from 1; none fails when it is 0.
void begin(long nth, Record& record);

/// While this lives the calling thread is the host's: its calls neither count nor fail.
class Spared {
 public:
    Spared();
    ~Spared();
    Spared(const Spared&) = delete;
    Spared& operator=(const Spared&) = delete;
};

/// Puts libcurl's memory among the calls. Before its first use.
void countMemoryOfLibcurl();

}  // namespace VexmoraSDK::FailingCalls
