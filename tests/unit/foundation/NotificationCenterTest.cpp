// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/NotificationCenter.h"

#include <gmock/gmock.h>

#include "tests/unit/foundation/Listener.h"

namespace VexmoraSDK::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NotificationCenterTest : public testing::Test {
 protected:
    /// A listener that writes its own name and the notification's into the log.
    std::shared_ptr<Listener> listener(const std::string& listenerName) {
        return std::make_shared<Listener>([this, listenerName](Object* notification) {
            log_.push_back(listenerName + " hears " +
                           dynamic_cast<Notification&>(*notification).name());
        });
    }

    void subscribe(const std::shared_ptr<Object>& observer, std::string name,
                   const std::shared_ptr<Object>& sender) {
        center_.addObserver(observer, "hear:", std::move(name), sender);
    }

    std::vector<std::string> heard() { return std::exchange(log_, {}); }

    const std::shared_ptr<Object> sender_ = std::make_shared<Object>();
    const std::shared_ptr<Object> stranger_ = std::make_shared<Object>();
    NotificationCenter center_;

 private:
    std::vector<std::string> log_;
};

TEST_F(NotificationCenterTest, DeliversTheSubscribedNameAndSenderOncePerSubscriptionInOrder) {
    const auto choosy = listener("choosy");
    const auto curious = listener("curious");
    subscribe(choosy, "ready", sender_);
    subscribe(curious, "ready", nullptr);
    subscribe(curious, "ready", sender_);
    center_.post("ready", sender_);
    EXPECT_THAT(heard(),
                ElementsAre("choosy hears ready", "curious hears ready", "curious hears ready"));
    center_.post("ready", stranger_);
    center_.post("ready", nullptr);
    EXPECT_THAT(heard(), ElementsAre("curious hears ready", "curious hears ready"));
    center_.post("gone", sender_);
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(NotificationCenterTest, HoldsObserversAndSendersWeaklyAndKeepsAllOtherSubscriptions) {
    const auto survivor = listener("survivor");
    subscribe(survivor, "ready", nullptr);
    subscribe(survivor, "ready", sender_);
    // The deleter holds the trace and is destroyed with the last weak reference.
    const auto trace = std::make_shared<int>();
    const auto mortal = [&trace](Object* object) {
        return std::shared_ptr<Object>(object, [trace](Object* dead) { delete dead; });
    };
    for (int round = 0; round < 1000; ++round) {
        subscribe(mortal(new Listener), "ready", sender_);
        subscribe(survivor, "ready", mortal(new Object));
    }
    EXPECT_LT(trace.use_count(), 200);
    EXPECT_EQ(survivor.use_count(), 1);
    EXPECT_EQ(sender_.use_count(), 1);
    center_.post("ready", sender_);
    EXPECT_THAT(heard(), ElementsAre("survivor hears ready", "survivor hears ready"));
}

TEST_F(NotificationCenterTest, DistinguishesASenderFromALaterOneAtTheSameAddress) {
    const auto keepInPlace = [](Object*) {};
    const auto place = std::make_unique<Listener>();
    const auto observer = listener("observer");
    std::shared_ptr<Object> sender(place.get(), keepInPlace);
    subscribe(observer, "ready", sender);
    sender.reset();
    sender = std::shared_ptr<Object>(place.get(), keepInPlace);
    center_.post("ready", sender);
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(NotificationCenterTest, LetsObserversPostSubscribeAndReleaseEachOther) {
    auto victim = std::make_shared<Listener>([](Object*) {});
    const auto nested = listener("nested");
    const auto busy = std::make_shared<Listener>([&](Object*) {
        victim.reset();
        subscribe(nested, "nested", nullptr);
        center_.post("nested", sender_);
    });
    subscribe(busy, "ready", sender_);
    subscribe(victim, "ready", sender_);
    center_.post("ready", sender_);
    EXPECT_THAT(heard(), ElementsAre("nested hears nested"));
}

}  // namespace
}  // namespace VexmoraSDK::platform
