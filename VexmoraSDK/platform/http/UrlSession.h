// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "VexmoraSDK/platform/foundation/Data.h"
#include "VexmoraSDK/platform/foundation/Error.h"
#include "VexmoraSDK/platform/foundation/NoDestructor.h"
#include "VexmoraSDK/platform/foundation/Url.h"

namespace VexmoraSDK::platform {

struct Fetch;
struct UrlSessionLimits;

/// When places for transfers are scarce, tasks of low priority wait for the others.
enum class TaskPriority : bool { normal, low };

/// The metadata of an HTTP response.
struct UrlResponse {
    long statusCode = 0;
};

/// One GET, made by `UrlSession::dataTask`. A resumed task lives until its completion has run,
/// whether or not it is held elsewhere.
class UrlSessionTask {
 public:
    explicit UrlSessionTask(std::shared_ptr<Fetch> fetch) : fetch_(std::move(fetch)) {}

    /// Starts the task, once; later calls do nothing. Inside a main-queue block the start waits for
    /// a further block, so that whatever this block still sets up is in place before the response
    /// comes; elsewhere it is at once. Any thread.
    void resume();

 private:
    std::shared_ptr<Fetch> fetch_;
};

/// Fetches addresses over HTTP and HTTPS. Owns its limits, its cache and its threads.
class UrlSession {
 public:
    /// Called once per resumed task, on a delivery thread of the session, never inside `resume`,
    /// and destroyed on that thread right afterwards. With an error, body and response are absent;
    /// otherwise both are present, the body of a response without one being empty.
    using Completion = std::function<void(SharedData body, std::optional<UrlResponse> response,
                                          std::optional<Error> error)>;

    /// The process-wide session; never destroyed. `ProcessExit.h` tells how it ends. Any thread.
    static UrlSession& shared();

    /// A task that fetches `url`. Redirects are followed, cookies kept in memory, certificates
    /// checked. A transport error describes itself in its user information and names the address.
    /// Any thread.
    UrlSessionTask dataTask(Url url, Completion completion,
                            TaskPriority priority = TaskPriority::normal);

    /// Change the limits only while no task is in flight.
    UrlSessionLimits& limits();

    /// When the process exits: no further completion begins, and transfers in flight end without
    /// one. Running completions are waited for, though no longer than a second.
    void stop();

 private:
    friend class NoDestructor<UrlSession>;
    friend class UrlSessionTask;
    struct Impl;

    UrlSession();

    const std::shared_ptr<Impl> impl_;
};

}  // namespace VexmoraSDK::platform
