// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/WorkerThread.h"

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <memory>
#include <utility>

namespace VexmoraSDK::platform {
namespace {

/// Completions, decoders and TLS were measured to need less than a tenth of this.
constexpr std::size_t kStackBytes = std::size_t{1} << 20;

using Work = std::function<void()>;

void* run(void* work) noexcept {
    const std::unique_ptr<Work> owned(static_cast<Work*>(work));
    (*owned)();
    return nullptr;
}

}  // namespace

std::optional<pthread_t> startWorkerThread(const std::string& name, Work work) {
    auto owned = std::make_unique<Work>(std::move(work));
    // The new thread inherits the mask.
    sigset_t blocked;
    sigset_t before;
    sigfillset(&blocked);
    for (const int fault : {SIGILL, SIGTRAP, SIGBUS, SIGFPE, SIGSEGV, SIGSYS})
        sigdelset(&blocked, fault);
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) return std::nullopt;
    pthread_attr_setstacksize(&attributes, kStackBytes);
    pthread_sigmask(SIG_SETMASK, &blocked, &before);
    pthread_t thread;
    int error = pthread_create(&thread, &attributes, run, owned.get());
    // A host's thread-local variables, which are on the stack, may be larger.
    if (error == EINVAL) error = pthread_create(&thread, nullptr, run, owned.get());
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    pthread_attr_destroy(&attributes);
    if (error != 0) return std::nullopt;
    static_cast<void>(owned.release());
    pthread_setname_np(thread, name.c_str());
    return thread;
}

}  // namespace VexmoraSDK::platform
