#pragma once

#include <memory>
#include <mutex>
#include <random>
#include <string>

#include "VexmoraSDK/VexmoraSDK.h"
#include "tests/soak/Outcomes.h"

namespace VexmoraSDK {

using Random = std::mt19937_64;

inline unsigned upTo(Random& random, unsigned most) {
    return std::uniform_int_distribution<unsigned>(0, most)(random);
}

/// One view's life in a host, from its creation until it is gone.
class Showing {
 public:
    /// One that is chosen at random, in `faultyPercent` of the cases of an ad that has a fault.
    static std::shared_ptr<Showing> start(Random& random, unsigned faultyPercent);

    /// Lets go of the view, if it is time to: at some moment of its choice, or when there is
    /// nothing more to be heard. On this thread or on another.
    void maybeLetGo(Random& random);

    /// Whether the view is gone, and with it all that held it.
    bool isOver() const { return delegate_.expired(); }

    /// Whether the outcome is the right one, of a view that is gone.
    bool isRight() const;
    bool isFaulty() const { return faulty_; }
    /// Whether the view was let go before its picture came.
    bool wasCutShort() const { return heard().empty() && !expected_.empty(); }
    std::string heard() const;
    /// For whoever looks for a mistake.
    std::string description() const;

 private:
    Showing() = default;

    void hear(char what);
    bool isSettled() const;
    void letGo(Random& random);

    std::string container_;
    Outcome expected_;
    bool faulty_ = false;
    bool isKept_ = false;
    bool wasSettled_ = false;
    bool paints_ = false;
    std::shared_ptr<VexmoraView> view_;
    std::weak_ptr<VexmoraDelegate> delegate_;  // the view's, and gone with it

    mutable std::mutex mutex_;
    std::string heard_;
};

}  // namespace VexmoraSDK
