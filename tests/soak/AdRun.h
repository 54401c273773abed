// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <random>
#include <string>

#include "VexmoraSDK/VexmoraSDK.h"
#include "tests/EventRecorder.h"

namespace VexmoraSDK {

using Random = std::mt19937_64;

/// One ad view of a host, from its creation until it is destroyed.
class AdRun {
 public:
    /// Creates a view for a container and of a kind chosen at random; `faultyPercent` of the
    /// containers are faulty. `listener` is called with each event, on the thread of the event.
    AdRun(
        Random& random, unsigned faultyPercent,
        EventRecorder::Listener listener = [](const std::string&) {});

    /// Releases the view at some moment: after its last event or, for one view in four, at any
    /// time. It does so on this thread or on another.
    void maybeRelease(Random& random);

    /// Whether the view and everything that kept it alive are destroyed.
    bool isOver() const { return delegate_.expired(); }
    /// Whether the events were as promised. Call it after the run is over.
    bool isRight() const;
    bool isFaulty() const { return faulty_; }
    /// Whether the view was released before its picture came.
    bool wasReleasedEarly() const { return events() == "nothing" && expected_ != "nothing"; }
    std::string events() const { return recorder_->events(); }
    /// The state of the run, for the report of a failure.
    std::string description() const;

 private:
    bool isSettled() const;
    void release(Random& random);

    std::string container_;
    std::string expected_;
    bool faulty_ = false;
    bool releasesEarly_ = false;
    bool wasSettled_ = false;
    std::shared_ptr<EventRecorder> recorder_;
    std::shared_ptr<VexmoraView> view_;
    std::weak_ptr<VexmoraDelegate> delegate_;  // The view owns it alone.
};

}  // namespace VexmoraSDK
