// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/ProcessExit.h"

#include <unistd.h>

#include <cstdlib>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/http/UrlSession.h"

namespace VexmoraSDK::platform {
namespace {

pid_t process = 0;

void endProcess() {
    if (getpid() != process) return;
    UrlSession::shared().stop();
    if (auto* queue = MainQueue::main()) queue->end();
}

}  // namespace

void prepareProcessExit() {
    process = getpid();
    if (auto* queue = MainQueue::main()) queue->prepareForEnd();
    if (std::atexit(endProcess) != 0) fatalError("no exit handler to be had");
}

}  // namespace VexmoraSDK::platform
