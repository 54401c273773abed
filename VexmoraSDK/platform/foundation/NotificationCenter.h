// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Object.h"

namespace VexmoraSDK::platform {

/// The argument of an observer's selector.
class VEXMORA_EXPORT Notification : public Object {
 public:
    static constexpr std::string_view kClassName = "Notification";

    Notification(std::string name, std::shared_ptr<Object> object)
        : name_(std::move(name)), object_(std::move(object)) {}

    std::string_view className() const override { return kClassName; }
    const std::string& name() const { return name_; }
    /// The sender; may be absent.
    const std::shared_ptr<Object>& object() const { return object_; }

 private:
    std::string name_;
    std::shared_ptr<Object> object_;
};

/// Delivers notifications to the observers that asked for their name and sender. Observers and
/// senders are held weakly; subscriptions of destroyed ones are dropped. Any thread.
class VEXMORA_EXPORT NotificationCenter {
 public:
    /// The process-wide centre; never destroyed.
    static NotificationCenter& defaultCenter();

    /// From now on `observer` is sent `selector`, with the `Notification`, for each notification of
    /// this name from `sender`, or from any sender when it is absent. Each call subscribes once
    /// more.
    void addObserver(const std::shared_ptr<Object>& observer, std::string selector,
                     std::string name, const std::shared_ptr<Object>& sender);

    /// Sends the selectors on the calling thread, in the order of subscription, before it returns.
    /// No lock is held meanwhile.
    void post(std::string name, const std::shared_ptr<Object>& sender);

 private:
    struct Subscription {
        std::size_t order;
        std::weak_ptr<Object> observer;
        std::string selector;
        std::string name;
    };
    using Sender = std::weak_ptr<Object>;

    void dropExpired();

    std::mutex mutex_;
    /// The subscriptions by sender. Senders are compared by ownership, because the address of a
    /// destroyed one is soon another's; the empty sender stands for any sender.
    std::map<Sender, std::vector<Subscription>, std::owner_less<Sender>> subscriptions_;
    std::size_t nextOrder_ = 0;
    std::size_t count_ = 0;
    std::size_t sweepAt_ = 64;
};

}  // namespace VexmoraSDK::platform
