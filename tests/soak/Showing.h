#pragma once

#include <functional>
#include <memory>
#include <random>
#include <string>

#include "VexmoraSDK/VexmoraSDK.h"
#include "tests/faults/Ear.h"

namespace VexmoraSDK {

using Random = std::mt19937_64;

/// One view's life in a host, from its creation until it is gone.
class Showing {
 public:
    /// One that is chosen at random, in `faultyPercent` of the cases of an ad that has a fault.
    /// `whenHeard` is run with what is heard, where it is heard.
    static std::shared_ptr<Showing> start(
        Random& random, unsigned faultyPercent,
        const std::function<void(const std::string&)>& whenHeard = [](const std::string&) {});

    /// Lets go of the view, if it is time to: at some moment of its choice, or when there is
    /// nothing more to be heard. On this thread or on another.
    void maybeLetGo(Random& random);

    /// Whether the view is gone, and with it all that held it.
    bool isOver() const { return delegate_.expired(); }

    /// Whether the outcome is the right one, of a view that is gone.
    bool isRight() const;
    bool isFaulty() const { return faulty_; }
    /// Whether the view was let go before its picture came.
    bool wasCutShort() const { return heard() == "nothing" && expected_ != "nothing"; }
    std::string heard() const { return ear_->heard(); }
    /// For whoever looks for a mistake.
    std::string description() const;

 private:
    Showing() = default;

    bool isSettled() const;
    void letGo(Random& random);

    std::string container_;
    std::string expected_;
    bool faulty_ = false;
    bool isKept_ = false;
    bool wasSettled_ = false;
    std::shared_ptr<VexmoraView> view_;
    const std::shared_ptr<Ear> ear_ = std::make_shared<Ear>();
    std::weak_ptr<VexmoraDelegate> delegate_;  // the view's, and gone with it
};

}  // namespace VexmoraSDK
