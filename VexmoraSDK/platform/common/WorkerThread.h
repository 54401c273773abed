#pragma once

#include <functional>
#include <string>
#include <thread>

namespace VexmoraSDK::platform {

/// A thread of that name (at most 15 characters) that runs `work`. It takes no signals but those of
/// its own faults: a host's handlers run on the host's threads, its crash reporter everywhere. No
/// thread to be had is a fatal stop.
std::thread startWorkerThread(const std::string& name, std::function<void()> work);

/// Waits for the end of the thread, unless the caller runs on it.
void finishWorkerThread(std::thread& thread);

}  // namespace VexmoraSDK::platform
