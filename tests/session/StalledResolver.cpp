#include "tests/session/StalledResolver.h"

#include <dlfcn.h>
#include <netdb.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string_view>

namespace VexmoraSDK {
namespace {

struct State {
    std::mutex mutex;
    std::condition_variable changed;
    bool stalled = false;
    int queries = 0;

    void set(bool stall) {
        const std::lock_guard lock(mutex);
        stalled = stall;
        changed.notify_all();
    }
};

State& state() {
    static State& state = *new State;  // a query may outlive everything else
    return state;
}

}  // namespace

StalledResolver::StalledResolver() {
    state().set(true);
}

StalledResolver::~StalledResolver() {
    state().set(false);
}

bool StalledResolver::waitForQuery() {
    std::unique_lock lock(state().mutex);
    return state().changed.wait_for(lock, std::chrono::seconds(30),
                                    [] { return state().queries > 0; });
}

}  // namespace VexmoraSDK

/// Stands before the C library's, for libcurl too.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints,
                           addrinfo** result) {
    using namespace VexmoraSDK;
    if (name && name == std::string_view(StalledResolver::kName)) {
        std::unique_lock lock(state().mutex);
        ++state().queries;
        state().changed.notify_all();
        state().changed.wait(lock, [] { return !state().stalled; });
        --state().queries;
        return EAI_NONAME;
    }
    static const auto next =
        reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return next(name, service, hints, result);
}
