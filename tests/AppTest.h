// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "tests/App.h"

namespace VexmoraSDK {

/// The events that a test has recorded. Callbacks hold it instead of their test, which requests may
/// outlive. Any thread.
class HeardEvents {
 public:
    void add(const std::string& event) {
        std::unique_lock lock(mutex_);
        events_.push_back(event);
        const auto reaction = std::exchange(reaction_, nullptr);
        lock.unlock();
        if (reaction) reaction();
    }

    bool contain(const std::string& event) const {
        const std::lock_guard lock(mutex_);
        return std::ranges::find(events_, event) != events_.end();
    }

    std::vector<std::string> take() {
        const std::lock_guard lock(mutex_);
        return std::exchange(events_, {});
    }

    /// Runs `reaction` once, inside the callback of the next event.
    void reactOnce(std::function<void()> reaction) {
        const std::lock_guard lock(mutex_);
        reaction_ = std::move(reaction);
    }

 private:
    mutable std::mutex mutex_;
    std::vector<std::string> events_;
    std::function<void()> reaction_;
};

/// A test with an application and recorded events. All tests of a process share one application,
/// because only the first one is accessible and animates.
class AppTest : public testing::Test {
 protected:
    AppTest() { [[maybe_unused]] static const bool started = (App::startForGood(), true); }
    ~AppTest() override { events_->reactOnce(nullptr); }

    void hear(const std::string& what) { events_->add(what); }

    bool waitToHear(const std::string& what) {
        return App::waitFor([&] { return events_->contain(what); });
    }

    /// The events since the last call.
    std::vector<std::string> heard() { return events_->take(); }

    const std::shared_ptr<HeardEvents> events_ = std::make_shared<HeardEvents>();
};

}  // namespace VexmoraSDK
