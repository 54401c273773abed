// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/UrlSession.h"

#include <algorithm>
#include <mutex>
#include <stdexcept>
#include <thread>

#include "VexmoraSDK/platform/MainQueue.h"
#include "tests/fake_platform/FakeUrlSession.h"

namespace VexmoraSDK::platform {

struct Fetch {
    Url url;
    UrlSession::Completion completion;
    TaskPriority priority;
    std::once_flag resumed;

    Fetch(Url address, UrlSession::Completion callback, TaskPriority urgency)
        : url(std::move(address)), completion(std::move(callback)), priority(urgency) {}
};

namespace {

struct State {
    std::mutex mutex;
    std::vector<std::string> requests;
    std::vector<std::string> lowPriorityRequests;
    std::vector<std::shared_ptr<Fetch>> open;
};

State& state() {
    static State& state = *new State;
    return state;
}

void start(std::shared_ptr<Fetch> transfer) {
    const std::lock_guard lock(state().mutex);
    state().requests.push_back(transfer->url.text());
    if (transfer->priority == TaskPriority::low)
        state().lowPriorityRequests.push_back(transfer->url.text());
    state().open.push_back(std::move(transfer));
}

std::shared_ptr<Fetch> takeOpen(std::string_view url) {
    const std::lock_guard lock(state().mutex);
    auto& open = state().open;
    const auto found = std::ranges::find(open, url, [](auto& each) { return each->url.text(); });
    if (found == open.end()) throw std::logic_error("no open request for " + std::string(url));
    auto transfer = std::move(*found);
    open.erase(found);
    return transfer;
}

// The delivery thread drops the last reference to the transfer and thus to what its completion
// holds.
void deliver(std::shared_ptr<Fetch> transfer, SharedData body, std::optional<UrlResponse> response,
             std::optional<Error> error) {
    std::thread([&, transfer = std::move(transfer)]() mutable noexcept {
        transfer->completion(std::move(body), response, std::move(error));
        transfer.reset();
    }).join();
}

}  // namespace

UrlSession::UrlSession() = default;

UrlSession& UrlSession::shared() {
    static NoDestructor<UrlSession> session;
    return *session;
}

UrlSessionTask UrlSession::dataTask(Url url, Completion completion, TaskPriority priority) {
    return UrlSessionTask(std::make_shared<Fetch>(std::move(url), std::move(completion), priority));
}

void UrlSessionTask::resume() {
    std::call_once(fetch_->resumed, [this] {
        if (auto* queue = MainQueue::main(); queue && queue->isRunningBlock()) {
            queue->async([transfer = fetch_] { start(transfer); });
        } else {
            start(fetch_);
        }
    });
}

void FakeUrlSession::reset() {
    std::vector<std::shared_ptr<Fetch>> dropped;
    const std::lock_guard lock(state().mutex);
    state().requests.clear();
    state().lowPriorityRequests.clear();
    dropped.swap(state().open);
}

std::vector<std::string> FakeUrlSession::requests() {
    const std::lock_guard lock(state().mutex);
    return state().requests;
}

std::vector<std::string> FakeUrlSession::lowPriorityRequests() {
    const std::lock_guard lock(state().mutex);
    return state().lowPriorityRequests;
}

void FakeUrlSession::answer(std::string_view url, std::string_view body) {
    deliver(takeOpen(url), std::make_shared<const Data>(dataOf(body)), UrlResponse{200},
            std::nullopt);
}

void FakeUrlSession::answerWithoutBody(std::string_view url) {
    deliver(takeOpen(url), nullptr, UrlResponse{200}, std::nullopt);
}

void FakeUrlSession::fail(std::string_view url, std::optional<Dictionary> userInfo) {
    deliver(takeOpen(url), nullptr, std::nullopt,
            Error("FakeTransport", -1001, std::move(userInfo)));
}

}  // namespace VexmoraSDK::platform
