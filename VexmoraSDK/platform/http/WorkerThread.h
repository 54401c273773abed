#pragma once

#include <functional>
#include <string>
#include <thread>

namespace VexmoraSDK::platform {

/// A thread of that name (at most 15 characters) that runs `work`. It takes no signals but those of
/// its own faults: a host's handlers run on the host's threads, its crash reporter everywhere. Not
/// joinable when there is no thread to be had.
std::thread startWorkerThread(const std::string& name, std::function<void()> work);

/// Waits for the end of the thread, unless the caller runs on it.
void finishWorkerThread(std::thread& thread);

}  // namespace VexmoraSDK::platform
