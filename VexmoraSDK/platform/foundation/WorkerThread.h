// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <thread>

namespace VexmoraSDK::platform {

/// A thread of that name (at most 15 characters) that runs `work`. It takes no signals but those of
/// its own faults: a host's handlers run on the host's threads, its crash reporter everywhere. Not
/// joinable when there is no thread to be had. Any thread.
std::thread startWorkerThread(const std::string& name, std::function<void()> work);

}  // namespace VexmoraSDK::platform
