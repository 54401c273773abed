#include "tests/soak/Showing.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <array>
#include <thread>
#include <vector>

#include "VexmoraSDK/platform/qt/ViewPainter.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"
#include "VexmoraSDK/views/VexmoraNativeView.h"

namespace VexmoraSDK {
namespace {

const std::vector<Container>& goodOnes() {
    static const auto& containers = *new std::vector<Container>{
        {"home-bottom", {"D", kStop, kStop}},
        {"article-native", {kStop, "D", kStop}},
        {"between-articles", {kStop, kStop, "D"}},
        {"anywhere", {"D", "D", "D"}},
    };
    return containers;
}

const std::vector<Container>& faultyOnes() {
    static const auto& containers = *new std::vector(outcomesIn(VEXMORA_OUTCOMES));
    return containers;
}

const Container& anyOf(const std::vector<Container>& containers, ViewKind kind, Random& random) {
    while (true) {
        const auto& container =
            containers[upTo(random, static_cast<unsigned>(containers.size() - 1))];
        if (container.outcomes[kind] != kStop) return container;
    }
}

/// Through one of the factory's doors that lead to a view of that kind.
std::shared_ptr<VexmoraView> createView(const std::string& container, ViewKind kind,
                                        std::shared_ptr<VexmoraDelegate> delegate, Random& random) {
    constexpr std::array kTypes = {VexmoraViewType::banner, VexmoraViewType::native,
                                   VexmoraViewType::interstitial};
    static const std::array<std::vector<const char*>, 3> sizes = {
        {{"320x60", "320x100", "468x60"}, {}, {"300x250", "728x90"}}};
    const auto& choice = sizes[kind];
    const unsigned chosen = upTo(random, static_cast<unsigned>(choice.size()));
    if (chosen < choice.size())
        return VexmoraViewFactory::createView(container, choice[chosen], std::move(delegate));
    return VexmoraViewFactory::createView(container, kTypes[kind], std::move(delegate));
}

void paint(VexmoraView& view) {
    const auto size = view.frame().size;
    QImage picture(static_cast<int>(size.width) + 1, static_cast<int>(size.height) + 1,
                   QImage::Format_RGB32);
    QPainter painter(&picture);
    platform::paintView(painter, view);
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

std::shared_ptr<Showing> Showing::start(Random& random, unsigned faultyPercent) {
    std::shared_ptr<Showing> self(new Showing);
    const auto kind = static_cast<ViewKind>(upTo(random, 2));
    self->faulty_ = upTo(random, 99) < faultyPercent;
    const auto& container =
        self->faulty_ ? anyOf(faultyOnes(), kind, random) : anyOf(goodOnes(), kind, random);
    self->container_ = container.name;
    self->expected_ = container.outcomes[kind];
    self->isKept_ = upTo(random, 3) != 0;
    self->paints_ = upTo(random, 7) == 0;

    const auto delegate = std::make_shared<VexmoraDelegate>();
    delegate->didReceiveAd = [self](VexmoraView& view) {
        self->hear(showsAPicture(view) ? 'D' : 'U');
        if (self->paints_) paint(view);
    };
    delegate->didHaveError = [self](VexmoraView&, const VexmoraError& error) {
        self->hear(static_cast<char>('0' + error.code()));
    };
    self->delegate_ = delegate;
    self->view_ = createView(container.name, kind, delegate, random);
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
    const bool waitedForPicture = expected_ == "D" || expected_ == "7";
    return outcome == expected_ || (outcome.empty() && !wasSettled_ && waitedForPicture);
}

std::string Showing::heard() const {
    const std::lock_guard lock(mutex_);
    return heard_;
}

std::string Showing::description() const {
    return container_ + ": expected \"" + expected_ + "\", heard \"" + heard() + "\", " +
           (isOver() ? "gone"
            : view_  ? "held"
                     : "let go") +
           (wasSettled_ ? " after it was settled" : "");
}

void Showing::hear(char what) {
    const std::lock_guard lock(mutex_);
    heard_ += what;
}

bool Showing::isSettled() const {
    if (!expected_.empty()) return heard().size() >= expected_.size();
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
