// SPDX-License-Identifier: MIT
#include "tests/torture/FailingCalls.h"

#include <curl/curl.h>
#include <dlfcn.h>
#include <poll.h>
#include <pthread.h>
#include <sys/socket.h>
#include <unistd.h>
#include <zlib.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace VexmoraSDK::FailingCalls {
namespace {

std::atomic<Record*> current = nullptr;
long failing = 0;
thread_local bool spared = false;

/// Counts a call and tells whether it is to fail. `reason` is the `errno` of calls that set it.
bool fails(const char* call, int reason = 0) {
    Record* record = current;
    if (!record || spared || ++record->calls != failing) return false;
    record->failed = call;
    if (reason != 0) errno = reason;
    return true;
}

constexpr const char* kMemoryOfLibcurl = "memory of libcurl";

}  // namespace

void begin(long nth, Record& record) {
    failing = nth;
    current = &record;
}

Spared::Spared() {
    spared = true;
}

Spared::~Spared() {
    spared = false;
}

void countMemoryOfLibcurl() {
    curl_global_init_mem(
        CURL_GLOBAL_DEFAULT,
        [](std::size_t size) { return fails(kMemoryOfLibcurl) ? nullptr : std::malloc(size); },
        std::free,
        [](void* memory, std::size_t size) {
            return fails(kMemoryOfLibcurl) ? nullptr : std::realloc(memory, size);
        },
        [](const char* text) { return fails(kMemoryOfLibcurl) ? nullptr : strdup(text); },
        [](std::size_t count, std::size_t size) {
            return fails(kMemoryOfLibcurl) ? nullptr : std::calloc(count, size);
        });
}

}  // namespace VexmoraSDK::FailingCalls

using VexmoraSDK::FailingCalls::fails;

// The other forms of `new` call these.

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return fails("operator new") ? nullptr : std::malloc(size ? size : 1);
}

void* operator new(std::size_t size) {
    if (void* memory = operator new(size, std::nothrow)) return memory;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size) {
    return operator new(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

// NOLINTBEGIN(bugprone-macro-parentheses): types and names take none
/// The function of that name in a shared library, which the one defined here takes the place of,
/// for other libraries too.
#define STANDS_BEFORE(function, name) \
    static const auto next = reinterpret_cast<decltype(&(function))>(dlsym(RTLD_NEXT, name))
#define CAN_FAIL_FOR(reason, failure, result, name, parameters, arguments) \
    extern "C" result name parameters {                                    \
        STANDS_BEFORE(name, #name);                                        \
        return fails(#name, reason) ? (failure) : next arguments;          \
    }
#define CAN_FAIL(failure, result, name, parameters, arguments) \
    CAN_FAIL_FOR(0, failure, result, name, parameters, arguments)

// The last argument fits a register, whatever its type, so that these functions need no variable
// number of arguments.
#define CAN_FAIL_WITH_ANY(failure, result, name, Handle, Option)                  \
    extern "C" result with_any_##name(Handle*, Option, void*) asm(#name);         \
    extern "C" result with_any_##name(Handle* handle, Option option, void* any) { \
        STANDS_BEFORE(with_any_##name, #name);                                    \
        return fails(#name) ? (failure) : next(handle, option, any);              \
    }
// NOLINTEND(bugprone-macro-parentheses)

CAN_FAIL_FOR(EIO, -1, ssize_t, read, (int file, void* bytes, size_t count), (file, bytes, count))
CAN_FAIL_FOR(EMFILE, -1, int, socket, (int domain, int type, int protocol) noexcept,
             (domain, type, protocol))
CAN_FAIL_FOR(EMFILE, -1, int, socketpair, (int domain, int type, int protocol, int* pair) noexcept,
             (domain, type, protocol, pair))
CAN_FAIL_FOR(ENETUNREACH, -1, int, connect, (int to, const sockaddr* address, socklen_t size),
             (to, address, size))
CAN_FAIL_FOR(ENOMEM, -1, int, poll, (pollfd * files, nfds_t count, int timeout),
             (files, count, timeout))
CAN_FAIL_FOR(ECONNRESET, -1, ssize_t, send, (int to, const void* bytes, size_t count, int flags),
             (to, bytes, count, flags))
CAN_FAIL_FOR(ECONNRESET, -1, ssize_t, recv, (int from, void* bytes, size_t count, int flags),
             (from, bytes, count, flags))
CAN_FAIL(EAGAIN, int, pthread_create,
         (pthread_t * thread, const pthread_attr_t* how, void* (*work)(void*), void* with) noexcept,
         (thread, how, work, with))

CAN_FAIL(CURLE_FAILED_INIT, CURLcode, curl_global_init, (long flags), (flags))
CAN_FAIL(nullptr, CURL*, curl_easy_init, (), ())
CAN_FAIL(nullptr, CURLM*, curl_multi_init, (), ())
CAN_FAIL(nullptr, CURLSH*, curl_share_init, (), ())
CAN_FAIL(CURLM_OUT_OF_MEMORY, CURLMcode, curl_multi_add_handle, (CURLM * multi, CURL* easy),
         (multi, easy))
CAN_FAIL(CURLM_BAD_EASY_HANDLE, CURLMcode, curl_multi_remove_handle, (CURLM * multi, CURL* easy),
         (multi, easy))
CAN_FAIL(CURLM_OUT_OF_MEMORY, CURLMcode, curl_multi_perform, (CURLM * multi, int* running),
         (multi, running))
CAN_FAIL(CURLM_OUT_OF_MEMORY, CURLMcode, curl_multi_poll,
         (CURLM * multi, curl_waitfd* extra, unsigned count, int timeout, int* ready),
         (multi, extra, count, timeout, ready))
CAN_FAIL(Z_MEM_ERROR, int, inflateInit2_,
         (z_stream * stream, int bits, const char* version, int size),
         (stream, bits, version, size))
CAN_FAIL(CURLM_WAKEUP_FAILURE, CURLMcode, curl_multi_wakeup, (CURLM * multi), (multi))

CAN_FAIL_WITH_ANY(CURLE_OUT_OF_MEMORY, CURLcode, curl_easy_setopt, CURL, CURLoption)
CAN_FAIL_WITH_ANY(CURLE_OUT_OF_MEMORY, CURLcode, curl_easy_getinfo, CURL, CURLINFO)
CAN_FAIL_WITH_ANY(CURLSHE_NOMEM, CURLSHcode, curl_share_setopt, CURLSH, CURLSHoption)
