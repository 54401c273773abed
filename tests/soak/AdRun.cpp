// SPDX-License-Identifier: MIT
#include "tests/soak/AdRun.h"

#include <algorithm>
#include <thread>
#include <vector>

#include "VexmoraSDK/platform/ui/ImageView.h"
#include "tests/faults/Outcomes.h"

namespace VexmoraSDK {
namespace {

std::size_t upTo(Random& random, std::size_t max) {
    return std::uniform_int_distribution<std::size_t>(0, max)(random);
}

/// One of the faults that stop no process.
const Promise& anyFault(Random& random) {
    static const auto& faults = *new auto([] {
        auto all = promises();
        std::erase_if(all, [](const Promise& promise) { return promise.events == "stop"; });
        return all;
    }());
    return faults[upTo(random, faults.size() - 1)];
}

Promise goodAd(Random& random) {
    // The pictures of the second container must be fetched each time.
    return {upTo(random, 1) == 0 ? "anywhere" : "fault-picture-no-store",
            static_cast<VexmoraViewType>(1 + upTo(random, 2)), "drawn"};
}

bool showsAPicture(const VexmoraView& view) {
    return std::ranges::any_of(view.subviews(), [](const auto& subview) {
        return dynamic_cast<const platform::ImageView*>(subview.get()) != nullptr;
    });
}

}  // namespace

AdRun::AdRun(Random& random, unsigned faultyPercent, EventRecorder::Listener listener)
    : faulty_(upTo(random, 99) < faultyPercent),
      releasesEarly_(upTo(random, 3) == 0),
      recorder_(std::make_shared<EventRecorder>(std::move(listener))) {
    const Promise promise = faulty_ ? anyFault(random) : goodAd(random);
    container_ = promise.container;
    expected_ = promise.events;
    auto delegate = recorder_->delegate();
    delegate->didReceiveAd = [record = delegate->didReceiveAd](VexmoraView& view) {
        record(view);
        if (!showsAPicture(view)) record(view);  // This makes the events wrong.
    };
    delegate_ = delegate;
    view_ = VexmoraViewFactory::createView(container_, promise.kind, std::move(delegate));
    if (releasesEarly_ && upTo(random, 2) == 0) release(random);
}

void AdRun::maybeRelease(Random& random) {
    if (!view_) return;
    wasSettled_ = wasSettled_ || isSettled();
    if ((wasSettled_ || releasesEarly_) && upTo(random, 3) == 0) release(random);
}

bool AdRun::isRight() const {
    // A view that was released waits for its ad, but for no picture.
    const bool waitedForPicture = expected_ == "drawn" || expected_ == "ImageRequestError";
    return events() == expected_ || (events() == "nothing" && !wasSettled_ && waitedForPicture);
}

std::string AdRun::description() const {
    return container_ + ": expected " + expected_ + ", recorded " + events() +
           (isOver() ? ", destroyed"
            : view_  ? ", held"
                     : ", released") +
           (wasSettled_ ? " after it was settled" : "");
}

bool AdRun::isSettled() const {
    return expected_ == "nothing" ? hasItsAdAlone(*view_) : events() == expected_;
}

void AdRun::release(Random& random) {
    if (upTo(random, 1) == 0) {
        view_.reset();
    } else {
        std::thread([view = std::move(view_)]() mutable { view.reset(); }).join();
    }
}

}  // namespace VexmoraSDK
