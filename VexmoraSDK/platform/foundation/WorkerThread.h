// SPDX-License-Identifier: MIT
#pragma once

#include <pthread.h>

#include <functional>
#include <optional>
#include <string>

namespace VexmoraSDK::platform {

/// A thread of that name (at most 15 characters) that runs `work`; the caller joins or detaches it.
/// It takes no signals but those of its own faults: a host's handlers run on the host's threads,
/// its crash reporter everywhere. Its stack is of 1 MiB, since the usual 8 count as data in full
/// where these are bounded. Absent when there is no thread to be had. Any thread.
std::optional<pthread_t> startWorkerThread(const std::string& name, std::function<void()> work);

}  // namespace VexmoraSDK::platform
