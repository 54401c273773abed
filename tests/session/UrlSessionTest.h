// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include "VexmoraSDK/platform/http/UrlSession.h"
#include "VexmoraSDK/platform/http/UrlSessionLimits.h"
#include "adserver/AdServer.h"

namespace VexmoraSDK::platform {

inline constexpr auto kDeadline = std::chrono::seconds(30);

struct Outcome {
    SharedData body;
    std::optional<UrlResponse> response;
    std::optional<Error> error;
    std::thread::id thread;

    std::string text() const { return body ? std::string(textOf(*body)) : "no body"; }
};

inline Outcome outcomeOf(std::future<Outcome> future) {
    if (future.wait_for(kDeadline) != std::future_status::ready) {
        ADD_FAILURE() << "no completion";
        std::quick_exit(1);
    }
    return future.get();
}

/// A task for `address` and the future of its outcome; a second completion of the same task would
/// throw on a delivery thread, which ends the process.
inline std::pair<UrlSessionTask, std::future<Outcome>> taskFor(const std::string& address) {
    auto promise = std::make_shared<std::promise<Outcome>>();
    auto future = promise->get_future();
    auto task = UrlSession::shared().dataTask(
        Url::fromString(address).value(), [promise](auto body, auto response, auto error) {
            promise->set_value(
                {std::move(body), response, std::move(error), std::this_thread::get_id()});
        });
    return {std::move(task), std::move(future)};
}

/// Starts a task whose completion somebody else counts.
inline void resume(const std::string& address, TaskPriority priority,
                   UrlSession::Completion completion) {
    UrlSession::shared()
        .dataTask(Url::fromString(address).value(), std::move(completion), priority)
        .resume();
}

inline Outcome fetch(const std::string& address) {
    auto [task, future] = taskFor(address);
    task.resume();
    return outcomeOf(std::move(future));
}

/// The real session, and a server for it to talk to.
class UrlSessionTest : public testing::Test {
 protected:
    UrlSessionTest() { limits = {}; }

    std::string ads(const std::string& container) const {
        return server.address() + "/ads?container=" + container + "&types=77";
    }

    static void expectTransportError(const std::string& address) {
        expectTransportError(address, fetch(address));
    }

    static void expectTransportError(const std::string& address, const Outcome& outcome) {
        SCOPED_TRACE(address);
        EXPECT_FALSE(outcome.body);
        EXPECT_FALSE(outcome.response);
        ASSERT_TRUE(outcome.error);
        EXPECT_NE(told(outcome, kLocalizedDescriptionKey), "");
        EXPECT_EQ(told(outcome, kFailingUrlStringKey), address);
    }

    static std::string told(const Outcome& outcome, std::string_view key) {
        const auto& userInfo = outcome.error.value().userInfo().value();
        const auto entry = userInfo.find(key);
        return entry == userInfo.end() ? "" : *entry->second.as<std::string>();
    }

    UrlSessionLimits& limits = UrlSession::shared().limits();
    AdServer server{Catalog::load(VEXMORA_CATALOG)};
};

}  // namespace VexmoraSDK::platform
