// SPDX-License-Identifier: MIT
#pragma once

#include <pthread.h>

#include <functional>
#include <optional>
#include <string>

namespace VexmoraSDK::platform {

/// Starts a thread of that name (at most 15 characters) that runs `work`; the caller joins or
/// detaches it. The thread blocks all signals but those of its own faults, so that a host's
/// handlers run on the host's threads and its crash reporter works everywhere. Its stack has 1 MiB,
/// because where a process's data is bounded the usual 8 MiB count in full. Absent when the system
/// gives no thread. Any thread.
std::optional<pthread_t> startWorkerThread(const std::string& name, std::function<void()> work);

}  // namespace VexmoraSDK::platform
