// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/VexmoraAd.h"

#include <QtGui/QGuiApplication>
#include <QtQml/QQmlInfo>
#include <QtQuick/QQuickWindow>
#include <utility>

#include "VexmoraSDK/quick/VisibilityWatcher.h"

namespace VexmoraSDK {
namespace {

bool isInterstitial(const VexmoraView* view) {
    return view && view->viewType() == VexmoraViewType::interstitial;
}

// A desktop app without the focus is inactive, and yet before the user's eyes.
bool isAppActive() {
    const auto state = QGuiApplication::applicationState();
    return state == Qt::ApplicationActive || state == Qt::ApplicationInactive;
}

int secondsOf(AdSlot::Duration duration) {
    return int(std::chrono::floor<std::chrono::seconds>(duration).count());
}

}  // namespace

VexmoraAd::VexmoraAd(QObject* parent)
    : QObject(parent), slot_(slotDelegate()), watcher_(std::make_unique<VisibilityWatcher>()) {
    wakeTimer_.setSingleShot(true);
    connect(&wakeTimer_, &QTimer::timeout, this, &VexmoraAd::wake);
    connect(watcher_.get(), &VisibilityWatcher::changed, this, &VexmoraAd::updateVisibility);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &VexmoraAd::updateVisibility);
}

VexmoraAd::~VexmoraAd() = default;

// The host may destroy the ad while it hears any of this.
AdSlot::Delegate VexmoraAd::slotDelegate() {
    using Signal = void (VexmoraAd::*)();
    const auto tells = [this](Signal signal) {
        return [this, signal](VexmoraView&) { Q_EMIT(this->*signal)(); };
    };
    AdSlot::Delegate delegate;
    delegate.willShowScreen = tells(&VexmoraAd::willShowScreen);
    delegate.willDismissScreen = tells(&VexmoraAd::willDismissScreen);
    delegate.didDismissScreen = tells(&VexmoraAd::didDismissScreen);
    delegate.didReceiveAd = [this](VexmoraView&) {
        announce({&VexmoraAd::errorChanged, &VexmoraAd::didReceiveAd});
    };
    delegate.didHaveError = [this](VexmoraView&, const VexmoraError& error) {
        const auto [code, description] = AdSlot::Failure::of(error);
        Q_EMIT didHaveError(int(code), QString::fromStdString(description));
    };
    delegate.willLeaveApplication = [this](VexmoraView&) {
        Q_EMIT willLeaveApplication(clickUrl());
    };
    delegate.stateChanged = [this] {
        announce({&VexmoraAd::errorChanged, &VexmoraAd::statusChanged});
    };
    delegate.failed = [this](const AdSlot::Failure&) { Q_EMIT errorChanged(); };
    delegate.becameViewable = [this] {
        announce({&VexmoraAd::viewableChanged, &VexmoraAd::becameViewable});
    };
    delegate.nextWakeChanged = [this] { armTimer(); };
    return delegate;
}

void VexmoraAd::announce(std::initializer_list<void (VexmoraAd::*)()> signalsInOrder) {
    const QPointer guard(this);
    if (toldView_ != slot_.view()) {
        toldView_ = slot_.view();
        chooseWatched();
        Q_EMIT adChanged();
        if (guard) Q_EMIT viewableChanged();
    }
    for (const auto signal : signalsInOrder)
        if (guard) Q_EMIT(this->*signal)();
}

void VexmoraAd::classBegin() {
    isComplete_ = false;
}

void VexmoraAd::componentComplete() {
    isComplete_ = true;
    slot_.setPlacement(placement_);
}

void VexmoraAd::changePlacement(AdSlot::Placement placement, void (VexmoraAd::*changed)()) {
    if (placement == placement_) return;
    placement_ = std::move(placement);
    const QPointer guard(this);
    Q_EMIT placementChanged();
    if (guard && isComplete_) slot_.setPlacement(placement_);
    if (guard) Q_EMIT(this->*changed)();
}

void VexmoraAd::withdraw() {
    slot_.setPlacement({});
}

QString VexmoraAd::containerId() const {
    return QString::fromStdString(placement_.containerId);
}

void VexmoraAd::setContainerId(const QString& containerId) {
    auto placement = placement_;
    placement.containerId = containerId.toStdString();
    changePlacement(std::move(placement), &VexmoraAd::containerIdChanged);
}

QString VexmoraAd::adSize() const {
    return QString::fromStdString(placement_.adSize);
}

void VexmoraAd::setAdSize(const QString& adSize) {
    auto placement = placement_;
    placement.adSize = adSize.toStdString();
    if (placement != placement_ && !adSize.isEmpty() &&
        !adViewBySize().contains(placement.adSize)) {
        qmlWarning(qobject_cast<QQuickItem*>(parent()) ? parent() : this)
            << "there are no ads of the size \"" << adSize
            << "\": choose 320x60, 320x100, 468x60, 300x250 or 728x90";
    }
    changePlacement(std::move(placement), &VexmoraAd::adSizeChanged);
}

int VexmoraAd::adType() const {
    return placement_.adType ? int(*placement_.adType) : 0;
}

void VexmoraAd::setAdType(int adType) {
    auto placement = placement_;
    placement.adType = adType == 0 ? std::nullopt : std::optional(VexmoraAdType{adType});
    changePlacement(std::move(placement), &VexmoraAd::adTypeChanged);
}

int VexmoraAd::viewType() const {
    return placement_.viewType ? int(*placement_.viewType) : 0;
}

void VexmoraAd::setViewType(int viewType) {
    auto placement = placement_;
    placement.viewType = viewType == 0 ? std::nullopt : std::optional(VexmoraViewType{viewType});
    changePlacement(std::move(placement), &VexmoraAd::viewTypeChanged);
}

Vexmora::Status VexmoraAd::status() const {
    switch (slot_.state()) {
        case AdSlot::State::loading: return Vexmora::Status::Loading;
        case AdSlot::State::ready: return Vexmora::Status::Ready;
        case AdSlot::State::failed: return Vexmora::Status::Error;
        default: return Vexmora::Status::Null;
    }
}

int VexmoraAd::errorCode() const {
    return slot_.failure() ? int(slot_.failure()->code) : 0;
}

QString VexmoraAd::errorString() const {
    return slot_.failure() ? QString::fromStdString(slot_.failure()->description) : QString();
}

int VexmoraAd::refreshInterval() const {
    return secondsOf(slot_.refreshInterval());
}

void VexmoraAd::setRefreshInterval(int seconds) {
    const int before = refreshInterval();
    slot_.setRefreshInterval(std::chrono::seconds(seconds));
    if (refreshInterval() != before) Q_EMIT refreshIntervalChanged();
}

int VexmoraAd::timeout() const {
    return secondsOf(slot_.timeout());
}

void VexmoraAd::setTimeout(int seconds) {
    const int before = timeout();
    slot_.setTimeout(std::chrono::seconds(seconds));
    if (timeout() != before) Q_EMIT timeoutChanged();
}

int VexmoraAd::expiresAfter() const {
    return secondsOf(slot_.expiresAfter());
}

void VexmoraAd::setExpiresAfter(int seconds) {
    const int before = expiresAfter();
    slot_.setExpiresAfter(std::chrono::seconds(seconds));
    if (expiresAfter() != before) Q_EMIT expiresAfterChanged();
}

QString VexmoraAd::textOf(std::string AdSlot::Ad::*text) const {
    return slot_.ad() ? QString::fromStdString((*slot_.ad()).*text) : QString();
}

void VexmoraAd::reload() {
    slot_.reload();
}

void VexmoraAd::open() {
    slot_.open();
}

void VexmoraAd::armTimer() {
    if (const auto wait = slot_.untilNextWake())
        wakeTimer_.start(*wait);
    else
        wakeTimer_.stop();
}

void VexmoraAd::wake() {
    const QPointer guard(this);
    updateVisibility();
    if (!guard) return;
    slot_.setScreenSize(screenSize());
    slot_.wake();
}

platform::Size VexmoraAd::screenSize() const {
    const auto* place = item_ ? item_.data() : qobject_cast<QQuickItem*>(parent());
    if (!place) return {};
    const QSizeF size = place->window() ? QSizeF(place->window()->size()) : place->size();
    return {size.width(), size.height()};
}

// What is watched for being seen.

void VexmoraAd::setItem(QQuickItem* item) {
    if (item == item_) return;
    item_ = item;
    chooseWatched();
    Q_EMIT itemChanged();
}

void VexmoraAd::setStage(QQuickItem* stage) {
    stage_ = stage;
    presentedView_ = stage ? slot_.view() : nullptr;
    chooseWatched();
    updateVisibility();
}

void VexmoraAd::chooseWatched() {
    if (!isInterstitial(slot_.view().get())) return watcher_->setItem(item_);
    // The screen may still present the interstitial before this one.
    watcher_->setItem(slot_.view() == presentedView_ ? stage_ : nullptr);
}

void VexmoraAd::updateVisibility() {
    const QPointer guard(this);
    slot_.setActive(isAppActive());
    if (guard) slot_.setVisibleFraction(watcher_->visibleFraction());
}

}  // namespace VexmoraSDK
