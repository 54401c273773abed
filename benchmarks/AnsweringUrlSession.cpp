// SPDX-License-Identifier: MIT
// A URL session without a network. It completes each task in a block of the main queue, so that a
// whole ad runs on one thread and takes the same number of instructions each time. Tasks for
// unknown addresses never complete.

#include "benchmarks/AnsweringUrlSession.h"

#include <map>
#include <utility>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/http/UrlSession.h"

namespace VexmoraSDK::platform {

struct Fetch {
    Url url;
    UrlSession::Completion completion;
};

namespace {

std::map<std::string, Data>& answers() {
    static auto& answers = *new std::map<std::string, Data>;
    return answers;
}

}  // namespace

UrlSession::UrlSession() = default;

UrlSession& UrlSession::shared() {
    static NoDestructor<UrlSession> session;
    return *session;
}

UrlSessionTask UrlSession::dataTask(Url url, Completion completion, TaskPriority) {
    return UrlSessionTask(std::make_shared<Fetch>(Fetch{std::move(url), std::move(completion)}));
}

void UrlSessionTask::resume() {
    const auto answer = answers().find(fetch_->url.text());
    if (answer == answers().end()) return;
    MainQueue::main()->async([transfer = fetch_, answer] {
        // A copy, so that its picture is decoded anew.
        transfer->completion(std::make_shared<const Data>(answer->second), UrlResponse{200},
                             std::nullopt);
    });
}

}  // namespace VexmoraSDK::platform

namespace VexmoraSDK::benchmarks {

void answer(const std::string& address, platform::Data body) {
    platform::answers()[address] = std::move(body);
}

}  // namespace VexmoraSDK::benchmarks
