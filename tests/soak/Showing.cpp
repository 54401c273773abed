#include "tests/soak/Showing.h"

#include <algorithm>
#include <thread>
#include <vector>

#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"
#include "VexmoraSDK/views/VexmoraNativeView.h"
#include "tests/faults/Outcomes.h"

namespace VexmoraSDK {
namespace {

unsigned upTo(Random& random, unsigned most) {
    return std::uniform_int_distribution<unsigned>(0, most)(random);
}

/// A fault that stops no process.
const Promise& anyFault(VexmoraViewType kind, Random& random) {
    static const auto& faults = *new auto(promises());
    while (true) {
        const auto& fault = faults.at(upTo(random, static_cast<unsigned>(faults.size() - 1)));
        if (fault.in(kind) != "stop") return fault;
    }
}

bool showsAPicture(const VexmoraView& view) {
    return std::ranges::any_of(view.subviews(), [](const auto& subview) {
        return dynamic_cast<const platform::ImageView*>(subview.get()) != nullptr;
    });
}

/// Whether the view has its ad, and nobody else has: the request for the picture is over.
template <class... Views>
bool nothingIsUnderWay(const VexmoraView& view) {
    const auto isAlone = [](const auto* known) { return known && known->ad().use_count() == 1; };
    return (isAlone(dynamic_cast<const Views*>(&view)) || ...);
}

}  // namespace

std::shared_ptr<Showing> Showing::start(Random& random, unsigned faultyPercent,
                                        const std::function<void(const std::string&)>& whenHeard) {
    std::shared_ptr<Showing> self(new Showing);
    const auto kind = static_cast<VexmoraViewType>(1 + upTo(random, 2));
    self->faulty_ = upTo(random, 99) < faultyPercent;
    // Half of the pictures are fetched each time.
    const auto* container = upTo(random, 1) == 0 ? "anywhere" : "fault-picture-no-store";
    const Promise good{container, "drawn", "drawn", "drawn"};
    const Promise& promise = self->faulty_ ? anyFault(kind, random) : good;
    self->container_ = promise.container;
    self->expected_ = promise.in(kind);
    self->isKept_ = upTo(random, 3) != 0;

    const auto delegate = Ear::delegate(self->ear_);
    delegate->didReceiveAd = [ear = self->ear_, whenHeard](VexmoraView& view) {
        ear->hear(showsAPicture(view) ? "drawn" : "drawn without a picture");
        whenHeard("drawn");
    };
    delegate->didHaveError = [hear = delegate->didHaveError, whenHeard](VexmoraView& view,
                                                                        const VexmoraError& error) {
        hear(view, error);
        whenHeard("error " + std::to_string(error.code()));
    };
    self->delegate_ = delegate;
    self->view_ = VexmoraViewFactory::createView(self->container_, kind, delegate);
    if (!self->isKept_ && upTo(random, 2) == 0) self->letGo(random);
    return self;
}

void Showing::maybeLetGo(Random& random) {
    if (!view_) return;
    wasSettled_ = wasSettled_ || isSettled();
    if ((wasSettled_ || !isKept_) && upTo(random, 3) == 0) letGo(random);
}

bool Showing::isRight() const {
    const std::string outcome = heard();
    // The picture of a view that was let go is nobody's any more.
    const bool waitedForPicture = expected_ == "drawn" || expected_ == "ImageRequestError";
    return outcome == expected_ || (outcome == "nothing" && !wasSettled_ && waitedForPicture);
}

std::string Showing::description() const {
    return container_ + ": expected " + expected_ + ", heard " + heard() +
           (isOver() ? ", gone"
            : view_  ? ", held"
                     : ", let go") +
           (wasSettled_ ? " after it was settled" : "");
}

bool Showing::isSettled() const {
    if (expected_ != "nothing") return heard() == expected_;
    return nothingIsUnderWay<VexmoraBannerView, VexmoraNativeView, VexmoraInterstitialView>(*view_);
}

void Showing::letGo(Random& random) {
    if (upTo(random, 1) == 0) {
        view_.reset();
    } else {
        std::thread([view = std::move(view_)]() mutable { view.reset(); }).join();
    }
}

}  // namespace VexmoraSDK
