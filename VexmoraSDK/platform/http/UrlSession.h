#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "VexmoraSDK/platform/foundation/Data.h"
#include "VexmoraSDK/platform/foundation/Error.h"
#include "VexmoraSDK/platform/foundation/Url.h"

namespace VexmoraSDK::platform {

/// What is known of an HTTP answer besides its body.
struct UrlResponse {
    long statusCode = 0;
};

/// One GET, made by `UrlSession::dataTask`. A resumed task lives until its completion has run,
/// whether or not somebody holds it.
class UrlSessionTask {
 public:
    struct Transfer;

    explicit UrlSessionTask(std::shared_ptr<Transfer> transfer) : transfer_(std::move(transfer)) {}

    /// Starts the transfer, once; later calls do nothing. Inside a main-queue block the start waits
    /// for a further block, so that whatever this block still sets up is in place before the answer
    /// comes; elsewhere it is at once. Any thread.
    void resume();

 private:
    std::shared_ptr<Transfer> transfer_;
};

/// Fetches addresses over HTTP and HTTPS.
class UrlSession {
 public:
    /// Called once per resumed task, on a delivery thread of the session, never from inside
    /// `resume`; what it holds is let go there right afterwards. With an error, body and response
    /// are absent; otherwise both are present, the body of an answer without one being empty.
    using Completion = std::function<void(
        std::optional<Data> body, std::optional<UrlResponse> response, std::optional<Error> error)>;

    /// The process-wide session; never destroyed. When the process exits, its threads stop and
    /// transfers in flight end without a completion. Any thread.
    static UrlSession& shared();

    /// A task that fetches `url`. Redirects are followed, cookies kept in memory, certificates
    /// checked. A transport error describes itself in its user information and names the address.
    /// Any thread.
    UrlSessionTask dataTask(Url url, Completion completion);

 private:
    UrlSession() = default;
};

}  // namespace VexmoraSDK::platform
