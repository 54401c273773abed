// SPDX-License-Identifier: MIT
#include "VexmoraSDK/presenting/AdSlot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <string_view>
#include <utility>
#include <vector>

#include "VexmoraSDK/ads/Banner.h"
#include "VexmoraSDK/ads/Native.h"
#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/foundation/Fatal.h"
#include "VexmoraSDK/platform/foundation/NoDestructor.h"
#include "VexmoraSDK/presenting/AdSize.h"
#include "VexmoraSDK/utils/Utils.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"
#include "VexmoraSDK/views/VexmoraNativeView.h"
#include "VexmoraSDK/views/VexmoraViewFactory.h"

namespace VexmoraSDK {

using namespace std::chrono_literals;
using platform::unwrap;

namespace {

constexpr double kViewableFraction = 0.5;
constexpr AdSlot::Duration kOff{0};
constexpr AdSlot::Duration kViewableAfter = 1s;
constexpr AdSlot::Duration kMinRefreshInterval = 10s;
constexpr AdSlot::Duration kMaxRetryWait = 5min;
// Timers of toolkits count milliseconds in 32 bits.
constexpr AdSlot::Duration kMaxUntilWake = 24h;
constexpr AdSlot::Duration kMaxDuration = std::chrono::years(10);

AdSlot::Duration bounded(AdSlot::Duration duration) {
    return std::clamp(duration, AdSlot::Duration::zero(), kMaxDuration);
}

/// The clock of the ages of ads, which includes the device's sleep. Linux's steady clock stops
/// then, which suits visibility.
AdSlot::Time timeWithSleep() {
#ifdef CLOCK_BOOTTIME
    timespec time{};
    if (clock_gettime(CLOCK_BOOTTIME, &time) == 0) {
        return AdSlot::Time(std::chrono::seconds(time.tv_sec) +
                            std::chrono::nanoseconds(time.tv_nsec));
    }
#endif
    return std::chrono::steady_clock::now();
}

std::string descriptionOf(const VexmoraError& error) {
    if (error.userInfo()) {
        const auto found = error.userInfo()->find(platform::kLocalizedDescriptionKey);
        if (found != error.userInfo()->end()) {
            if (const auto* text = found->second.as<std::string>()) return *text;
        }
    }
    static constexpr std::array kNames{"UnknownError",     "ParsingError",          //
                                       "RequestError",     "InvalidAdTypeError",    //
                                       "NoFill",           "InvalidViewTypeError",  //
                                       "ImageRequestError"};
    const bool isKnown = error.code() >= 1 && error.code() <= std::ssize(kNames);
    return kNames[isKnown ? static_cast<std::size_t>(error.code() - 1) : 0];
}

/// The ad that was drawn into `view`; absent if the host has removed it since.
std::shared_ptr<ImageAd> modelOf(VexmoraView& view) {
    if (auto* banner = dynamic_cast<VexmoraBannerView*>(&view)) return banner->ad();
    if (auto* native = dynamic_cast<VexmoraNativeView*>(&view)) return native->ad();
    auto& interstitial = dynamic_cast<VexmoraInterstitialView&>(view);
    return std::dynamic_pointer_cast<ImageAd>(interstitial.ad());
}

std::optional<AdSlot::Ad> contentOf(VexmoraView& view) {
    const auto model = modelOf(view);
    if (!model) return std::nullopt;
    AdSlot::Ad content;
    content.adType = model->adType();
    content.clickUrl = model->clickUrl().text();
    content.picture = model->image();
    if (const auto* native = dynamic_cast<Native*>(model.get())) {
        content.title = native->title();
        content.description = native->desc();
        content.displayName = native->displayName();
    }
    return content;
}

}  // namespace

AdSlot::Failure AdSlot::Failure::of(const VexmoraError& error) {
    return {error.code(), descriptionOf(error)};
}

bool AdSlot::Placement::isComplete() const {
    if (containerId.empty()) return false;
    if (!adSize.empty()) return adViewBySize().contains(adSize);
    return adType || viewType;
}

platform::Size AdSlot::Placement::reservedSize() const {
    auto type = adType;
    if (!adSize.empty()) {
        const auto found = adTypesBySize().find(adSize);
        type = found == adTypesBySize().end() ? std::nullopt : std::optional(found->second.front());
    }
    if (!type || !std::ranges::count(VexmoraBannerView::allowedAdTypes(), *type)) return {};
    return sizeOf(*type);
}

/// The slot behind its handle. Callers hold it, because the delegate may destroy the handle, which
/// makes it `closed`. Views hold it weakly, and lock it on the main thread only, so that it is
/// destroyed there.
struct AdSlot::Impl : std::enable_shared_from_this<AdSlot::Impl> {
    explicit Impl(Delegate host) : delegate(std::move(host)) {}

    struct Request {
        int number = 0;
        Time startedAt;
        std::shared_ptr<VexmoraView> view;
    };

    bool isInterstitial() const { return kind == VexmoraViewType::interstitial; }
    bool isExposed() const { return active && visibleFraction > 0; }
    bool isInView() const {
        return active && visibleFraction >= kViewableFraction && state == State::ready;
    }

    template <class... Arguments>
    void tell(const std::function<void(Arguments...)>& operation,
              std::type_identity_t<Arguments>... arguments) const {
        if (!closed && operation) operation(arguments...);
    }

    void setState(State next) {
        if (std::exchange(state, next) != next) tell(delegate.stateChanged);
    }

    State stateWithoutAd(State otherwise) const { return shown ? State::ready : otherwise; }

    // Timers.

    /// The exposure after which the ad on show, or a missing one, is replaced.
    Duration wait() const {
        // A picture that never arrives causes no event, so a request in flight may take this long.
        if (request) return std::max(refreshInterval, kMaxRetryWait);
        auto wait = refreshInterval;
        for (int i = 0; i < failures && wait < kMaxRetryWait; ++i)
            wait = std::min(2 * wait, kMaxRetryWait);
        return wait;
    }

    void restartExposure() {
        exposure = {};
        exposedSince = isExposed() ? std::optional(clock()) : std::nullopt;
    }

    /// Called after `visibleFraction` or `active` has changed.
    void visibilityChanged() {
        const auto now = clock();
        if (exposedSince && !isExposed()) exposure += now - *std::exchange(exposedSince, {});
        if (!exposedSince && isExposed()) exposedSince = now;

        if (!isInView()) {
            // A full second counts even if `wake` is called late.
            if (viewableAt && *viewableAt > now) viewableAt.reset();
        } else if (!viewable && !viewableAt) {
            viewableAt = now + kViewableAfter;
        }
    }

    std::optional<Time> refreshAt() const {
        const bool refreshes = refreshInterval > kOff && !isInterstitial() && mayRetry;
        if (!refreshes || !exposedSince || askAt || state == State::empty) return std::nullopt;
        return *exposedSince + (wait() - exposure);
    }

    std::optional<Time> timeoutAt() const {
        if (!request || timeout == kOff) return std::nullopt;
        return request->startedAt + timeout;
    }

    std::optional<Time> nextWake() const {
        std::optional<Time> next;
        for (const auto& time : {askAt, viewableAt, timeoutAt(), refreshAt()})
            if (time && (!next || *time < *next)) next = time;
        return next;
    }

    void tellNextWake() {
        const auto next = nextWake();
        if (std::exchange(toldWake, next) != next) tell(delegate.nextWakeChanged);
    }

    void wake() {
        toldWake.reset();
        const auto isDue = [this](std::optional<Time> time) {
            return !closed && time && *time <= clock();
        };
        if (isDue(viewableAt)) tellViewable();
        if (isDue(timeoutAt())) timeOut();
        if (isDue(refreshAt())) askAt = clock();
        if (isDue(askAt)) ask();
        tellNextWake();
    }

    void tellViewable() {
        viewableAt.reset();
        viewable = true;
        tell(delegate.becameViewable);
    }

    void timeOut() {
        const int givenUp = ++number;
        const Failure reason{kTimedOut, "TimedOut"};
        fail(reason);
        if (number == givenUp) tell(delegate.failed, reason);
    }

    // Requests and their outcomes.

    void ask() {
        askAt.reset();
        if (!shown) failure.reset();
        mayRetry = true;
        const int asked = ++number;
        request = Request{asked, clock(), nullptr};
        restartExposure();
        setState(stateWithoutAd(State::loading));
        if (closed || !isCurrent(asked)) return;

        auto made = makeView(asked);
        // The host may have heard of an error already.
        if (closed || !isCurrent(asked)) return;
        kind = made->viewType();
        if (isInterstitial()) made->setFrame({{0, 0}, screenSize});
        request->view = std::move(made);
    }

    bool isCurrent(int asked) const { return request && request->number == asked; }

    std::shared_ptr<VexmoraView> makeView(int asked) {
        const auto hears = delegateFor(asked);
        const auto& [container, adSize, adType, viewType] = placement;
        if (!adSize.empty()) return VexmoraViewFactory::createView(container, adSize, hears);
        if (adType) return VexmoraViewFactory::createView(container, *adType, hears);
        return VexmoraViewFactory::createView(container, *viewType, hears);
    }

    std::shared_ptr<VexmoraDelegate> delegateFor(int asked) {
        const std::weak_ptr<Impl> slot = weak_from_this();
        const auto handOn = [slot](std::function<void(VexmoraView&)> VexmoraDelegate::*operation) {
            return [slot, operation](VexmoraView& view) {
                if (const auto self = slot.lock()) self->tell(self->delegate.*operation, view);
            };
        };
        auto heard = std::make_shared<VexmoraDelegate>();
        heard->willShowScreen = handOn(&VexmoraDelegate::willShowScreen);
        heard->willDismissScreen = handOn(&VexmoraDelegate::willDismissScreen);
        heard->didDismissScreen = handOn(&VexmoraDelegate::didDismissScreen);
        heard->willLeaveApplication = handOn(&VexmoraDelegate::willLeaveApplication);
        heard->didReceiveAd = [slot, asked](VexmoraView&) {
            if (const auto self = slot.lock()) self->receive(asked);
        };
        heard->didHaveError = [slot, asked](VexmoraView& view, const VexmoraError& error) {
            auto& queue = unwrap(platform::MainQueue::main(), "application object");
            if (queue.isMainThread()) {
                if (const auto self = slot.lock()) self->hearError(asked, view, error);
                return;
            }
            const auto held = std::static_pointer_cast<VexmoraView>(view.shared_from_this());
            queue.async([slot, asked, held, error] {
                if (const auto self = slot.lock()) self->hearError(asked, *held, error);
            });
        };
        return heard;
    }

    void receive(int asked) {
        if (closed || !isCurrent(asked)) return;
        // The previous ad may have become viewable without a `wake` since.
        if (viewableAt && *viewableAt <= clock()) tellViewable();
        if (closed || !isCurrent(asked)) return;

        shown = std::exchange(request, {})->view;
        ad = contentOf(*shown);
        drawnAt = ageClock();
        presented = false;
        failure.reset();
        failures = 0;
        viewable = false;
        viewableAt.reset();
        if (isInterstitial()) visibleFraction = 0;
        restartExposure();
        const auto drawn = shown;
        const bool isFirst = std::exchange(state, State::ready) != State::ready;
        visibilityChanged();
        if (isFirst) tell(delegate.stateChanged);
        if (shown == drawn) tell(delegate.didReceiveAd, *drawn);
        tellNextWake();
    }

    void hearError(int asked, VexmoraView& about, const VexmoraError& error) {
        // A request may have a second error, which is passed on too.
        if (closed || asked != number) return;
        const bool isFirst = isCurrent(asked);
        const auto reason = Failure::of(error);
        if (isFirst) {
            const auto code = static_cast<VexmoraErrorCodes>(error.code());
            mayRetry = code != VexmoraErrorCodes::InvalidAdTypeError;
            fail(reason);
        }
        // The host may have requested another ad in `stateChanged`.
        if (asked == number) tell(delegate.didHaveError, about, error);
        if (asked == number && isFirst) tell(delegate.failed, reason);
        tellNextWake();
    }

    void fail(Failure reason) {
        request.reset();
        failure = std::move(reason);
        ++failures;
        restartExposure();
        setState(stateWithoutAd(State::failed));
    }

    void setPlacement(Placement next) {
        if (next == placement) return;
        placement = std::move(next);
        ++number;
        request.reset();
        shown.reset();
        ad.reset();
        drawnAt.reset();
        failure.reset();
        failures = 0;
        viewable = false;
        viewableAt.reset();
        kind.reset();
        askAt = placement.isComplete() ? std::optional(clock()) : std::nullopt;
        setState(askAt ? State::loading : State::empty);
        tellNextWake();
    }

    void reload() {
        if (!placement.isComplete()) return;
        askAt = clock();
        if (!shown) failure.reset();
        setState(stateWithoutAd(State::loading));
        tellNextWake();
    }

    const Delegate delegate;
    bool closed = false;
    std::function<Time()> clock = std::chrono::steady_clock::now;
    std::function<Time()> ageClock = timeWithSleep;

    Placement placement;
    platform::Size screenSize;
    Duration expiresAfter = 1h;
    Duration refreshInterval{0};
    Duration timeout = 1min;
    double visibleFraction = 0;
    bool active = true;

    State state = State::empty;
    std::optional<Time> askAt;
    /// The number of the latest request. Errors of earlier requests are ignored.
    int number = 0;
    std::optional<Request> request;
    /// The kind of view of the latest request.
    std::optional<VexmoraViewType> kind;
    std::optional<Failure> failure;
    /// The number of failed requests since the last ad.
    int failures = 0;
    bool mayRetry = true;

    std::shared_ptr<VexmoraView> shown;
    std::optional<Ad> ad;
    /// The time of drawing, on the clock of ages.
    std::optional<Time> drawnAt;
    bool presented = false;
    bool viewable = false;
    /// The time at which the ad becomes viewable, unless it goes out of view before.
    std::optional<Time> viewableAt;
    /// The time of exposure since the latest request began or ended, up to `exposedSince`.
    Time::duration exposure{};
    std::optional<Time> exposedSince;

    std::optional<Time> toldWake;
};

namespace {

/// All slots that exist. Main thread.
std::vector<const AdSlot*>& allSlots() {
    static platform::NoDestructor<std::vector<const AdSlot*>> slots;
    return *slots;
}

std::optional<AdSlot::Duration> untilNextWakeOfAll() {
    std::optional<AdSlot::Duration> next;
    for (const auto* slot : allSlots()) {
        const auto time = slot->untilNextWake();
        if (time && (!next || *time < *next)) next = time;
    }
    return next;
}

}  // namespace

AdSlot::AdSlot(Delegate delegate) noexcept : impl_(std::make_shared<Impl>(std::move(delegate))) {
    allSlots().push_back(this);
}

AdSlot::~AdSlot() {
    std::erase(allSlots(), this);
    impl_->closed = true;
}

const AdSlot::Placement& AdSlot::placement() const {
    return impl_->placement;
}

void AdSlot::setPlacement(Placement placement) noexcept {
    const auto held = impl_;
    held->setPlacement(std::move(placement));
}

void AdSlot::reload() noexcept {
    const auto held = impl_;
    held->reload();
}

AdSlot::State AdSlot::state() const {
    return impl_->state;
}

const std::shared_ptr<VexmoraView>& AdSlot::view() const {
    return impl_->shown;
}

const std::optional<AdSlot::Ad>& AdSlot::ad() const {
    return impl_->ad;
}

void AdSlot::open() noexcept {
    const auto view = impl_->shown;
    // An interstitial lacks this selector, and the tap would stop the app.
    if (view && view->viewType() != VexmoraViewType::interstitial)
        view->perform(Utils::handleTapCallbackSelector, nullptr);
}

bool AdSlot::isViewable() const {
    return impl_->viewable;
}

const std::optional<AdSlot::Failure>& AdSlot::failure() const {
    return impl_->failure;
}

std::optional<AdSlot::Duration> AdSlot::age() const {
    if (!impl_->drawnAt) return std::nullopt;
    return std::chrono::floor<Duration>(impl_->ageClock() - *impl_->drawnAt);
}

AdSlot::Duration AdSlot::expiresAfter() const {
    return impl_->expiresAfter;
}

void AdSlot::setExpiresAfter(Duration age) {
    impl_->expiresAfter = bounded(age);
}

bool AdSlot::isPresentable() const {
    if (!view() || view()->viewType() != VexmoraViewType::interstitial) return false;
    if (impl_->presented || view()->window()) return false;
    return expiresAfter() == kOff || *age() < expiresAfter();
}

void AdSlot::setPresented() {
    impl_->presented = true;
}

AdSlot::Duration AdSlot::refreshInterval() const {
    return impl_->refreshInterval;
}

void AdSlot::setRefreshInterval(Duration interval) noexcept {
    const auto held = impl_;
    held->refreshInterval =
        interval > kOff ? std::max(bounded(interval), kMinRefreshInterval) : kOff;
    held->tellNextWake();
}

AdSlot::Duration AdSlot::timeout() const {
    return impl_->timeout;
}

void AdSlot::setTimeout(Duration timeout) noexcept {
    const auto held = impl_;
    held->timeout = bounded(timeout);
    held->tellNextWake();
}

double AdSlot::visibleFraction() const {
    return impl_->visibleFraction;
}

void AdSlot::setVisibleFraction(double fraction) noexcept {
    if (fraction == impl_->visibleFraction) return;
    const auto held = impl_;
    held->visibleFraction = fraction;
    held->visibilityChanged();
    held->tellNextWake();
}

bool AdSlot::isActive() const {
    return impl_->active;
}

void AdSlot::setActive(bool active) noexcept {
    const auto held = impl_;
    held->active = active;
    held->visibilityChanged();
    held->tellNextWake();
}

platform::Size AdSlot::screenSize() const {
    return impl_->screenSize;
}

void AdSlot::setScreenSize(platform::Size size) {
    impl_->screenSize = size;
}

std::optional<AdSlot::Duration> AdSlot::untilNextWake() const {
    const auto next = impl_->nextWake();
    if (!next) return std::nullopt;
    return std::clamp(std::chrono::ceil<Duration>(*next - impl_->clock()), Duration::zero(),
                      kMaxUntilWake);
}

void AdSlot::wake() noexcept {
    const auto held = impl_;
    held->wake();
}

std::optional<AdSlot::Duration> AdSlot::wakeAll() noexcept {
    auto next = untilNextWakeOfAll();
    if (next != Duration::zero()) return next;
    // A slot's callbacks may create and destroy other slots.
    std::vector<std::shared_ptr<Impl>> held;
    for (const auto* slot : allSlots())
        held.push_back(slot->impl_);
    for (const auto& slot : held)
        slot->wake();
    return untilNextWakeOfAll();
}

void AdSlot::setClock(std::function<Time()> clock) {
    impl_->clock = clock;
    impl_->ageClock = std::move(clock);
}

}  // namespace VexmoraSDK
