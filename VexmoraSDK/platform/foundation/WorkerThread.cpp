// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/WorkerThread.h"

#include <pthread.h>

#include <csignal>
#include <system_error>
#include <utility>

namespace VexmoraSDK::platform {

std::thread startWorkerThread(const std::string& name, std::function<void()> work) {
    // The new thread inherits the mask.
    sigset_t blocked;
    sigset_t before;
    sigfillset(&blocked);
    for (const int fault : {SIGILL, SIGTRAP, SIGBUS, SIGFPE, SIGSEGV, SIGSYS})
        sigdelset(&blocked, fault);
    pthread_sigmask(SIG_SETMASK, &blocked, &before);
    std::thread thread;
    try {
        thread = std::thread([work = std::move(work)]() noexcept { work(); });
        pthread_setname_np(thread.native_handle(), name.c_str());
    } catch (const std::system_error&) {
        // `thread` stays as it is.
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
}

}  // namespace VexmoraSDK::platform
