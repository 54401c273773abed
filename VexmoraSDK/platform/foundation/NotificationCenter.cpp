// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/NotificationCenter.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "VexmoraSDK/platform/foundation/NoDestructor.h"

namespace VexmoraSDK::platform {

NotificationCenter& NotificationCenter::defaultCenter() {
    static NoDestructor<NotificationCenter> center;
    return *center;
}

void NotificationCenter::addObserver(const std::shared_ptr<Object>& observer, std::string selector,
                                     std::string name, const std::shared_ptr<Object>& sender) {
    const std::lock_guard lock(mutex_);
    if (count_ >= sweepAt_) dropExpired();
    subscriptions_[sender].push_back(
        {nextOrder_++, observer, std::move(selector), std::move(name)});
    ++count_;
}

void NotificationCenter::post(std::string name, const std::shared_ptr<Object>& sender) {
    struct Delivery {
        std::size_t order;
        std::shared_ptr<Object> observer;
        std::string selector;
    };
    std::vector<Delivery> deliveries;
    const auto collect = [&](const Sender& filter) {
        const auto found = subscriptions_.find(filter);
        if (found == subscriptions_.end()) return;
        for (const auto& subscription : found->second) {
            if (subscription.name != name) continue;
            if (auto observer = subscription.observer.lock()) {
                deliveries.push_back(
                    {subscription.order, std::move(observer), subscription.selector});
            }
        }
    };
    {
        const std::lock_guard lock(mutex_);
        collect(Sender());
        if (sender) collect(sender);
    }
    std::ranges::sort(deliveries, {}, &Delivery::order);

    Notification notification(std::move(name), sender);
    for (const auto& delivery : deliveries) {
        delivery.observer->perform(delivery.selector, &notification);
    }
}

/// It runs when the subscriptions have doubled since the last time, so that it costs each
/// subscription a constant time.
void NotificationCenter::dropExpired() {
    count_ = 0;
    for (auto entry = subscriptions_.begin(); entry != subscriptions_.end();) {
        auto& [sender, subscriptions] = *entry;
        const bool isForAnySender = !Sender().owner_before(sender);
        if (sender.expired() && !isForAnySender) subscriptions.clear();
        std::erase_if(subscriptions, [](const auto& each) { return each.observer.expired(); });
        count_ += subscriptions.size();
        entry = subscriptions.empty() ? subscriptions_.erase(entry) : std::next(entry);
    }
    sweepAt_ = std::max<std::size_t>(64, 2 * count_);
}

}  // namespace VexmoraSDK::platform
