// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/VexmoraAd.h"

#include <QtGui/QGuiApplication>
#include <QtQml/QQmlInfo>
#include <QtQuick/QQuickWindow>
#include <utility>

#include "VexmoraSDK/presenting/QtSlot.h"
#include "VexmoraSDK/quick/VexmoraAdItem.h"
#include "VexmoraSDK/quick/VisibilityWatcher.h"

namespace VexmoraSDK {
VexmoraAd::VexmoraAd(QObject* parent)
    : QObject(parent), slot_(slotDelegate()), watcher_(std::make_unique<VisibilityWatcher>()) {
    wakeTimer_.setSingleShot(true);
    connect(&wakeTimer_, &QTimer::timeout, this, &VexmoraAd::wake);
    connect(watcher_.get(), &VisibilityWatcher::changed, this, &VexmoraAd::updateVisibility);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &VexmoraAd::updateVisibility);
}

VexmoraAd::~VexmoraAd() = default;

// The host may destroy the ad inside any of these callbacks.
AdSlot::Delegate VexmoraAd::slotDelegate() {
    auto delegate = QtSlot::delegateOf(
        this, [this](std::initializer_list<void (VexmoraAd::*)()> all) { announce(all); });
    delegate.nextWakeChanged = [this] { QtSlot::arm(wakeTimer_, slot_); };
    return delegate;
}

void VexmoraAd::announce(std::initializer_list<void (VexmoraAd::*)()> signalsInOrder) {
    const QPointer guard(this);
    const auto about = slot_.view();
    if (toldView_ != about) {
        toldView_ = about;
        chooseWatched();
        Q_EMIT adChanged();
        if (guard) send(&VexmoraAd::viewableChanged);
    }
    // A host that asks for something else meanwhile hears no more of the ad.
    for (const auto signal : signalsInOrder)
        if (guard && slot_.view() == about) send(signal);
}

void VexmoraAd::send(void (VexmoraAd::*signal)()) {
    const QPointer guard(this);
    Q_EMIT(this->*signal)();
    if (guard && shownBy_) shownBy_->handOn(signal);
}

void VexmoraAd::classBegin() {
    isComplete_ = false;
}

void VexmoraAd::componentComplete() {
    isComplete_ = true;
    slot_.setPlacement(placement_);
}

template <class Value>
void VexmoraAd::changePlacement(Value AdSlot::Placement::*member, Value value,
                                void (VexmoraAd::*changed)()) {
    if (placement_.*member == value) return;
    placement_.*member = std::move(value);
    const QPointer guard(this);
    Q_EMIT placementChanged();
    if (guard && isComplete_) slot_.setPlacement(placement_);
    if (guard) send(changed);
}

void VexmoraAd::withdraw() {
    slot_.setPlacement({});
}

QString VexmoraAd::containerId() const {
    return QString::fromStdString(placement_.containerId);
}

void VexmoraAd::setContainerId(const QString& containerId) {
    changePlacement(&AdSlot::Placement::containerId, containerId.toStdString(),
                    &VexmoraAd::containerIdChanged);
}

QString VexmoraAd::adSize() const {
    return QString::fromStdString(placement_.adSize);
}

void VexmoraAd::setAdSize(const QString& adSize) {
    if (adSize != this->adSize() && !adSize.isEmpty() &&
        !adViewBySize().contains(adSize.toStdString())) {
        qmlWarning(qobject_cast<QQuickItem*>(parent()) ? parent() : this)
            << "there are no ads of the size \"" << adSize
            << "\": choose 320x60, 320x100, 468x60, 300x250 or 728x90";
    }
    changePlacement(&AdSlot::Placement::adSize, adSize.toStdString(), &VexmoraAd::adSizeChanged);
}

int VexmoraAd::adType() const {
    return QtSlot::rawFrom(placement_.adType);
}

void VexmoraAd::setAdType(int adType) {
    changePlacement(&AdSlot::Placement::adType, QtSlot::typeFrom<VexmoraAdType>(adType),
                    &VexmoraAd::adTypeChanged);
}

int VexmoraAd::viewType() const {
    return QtSlot::rawFrom(placement_.viewType);
}

void VexmoraAd::setViewType(int viewType) {
    changePlacement(&AdSlot::Placement::viewType, QtSlot::typeFrom<VexmoraViewType>(viewType),
                    &VexmoraAd::viewTypeChanged);
}

Vexmora::Status VexmoraAd::status() const {
    return QtSlot::status<Vexmora::Status>(slot_);
}

int VexmoraAd::errorCode() const {
    return QtSlot::errorCode(slot_);
}

QString VexmoraAd::errorString() const {
    return QtSlot::errorString(slot_);
}

int VexmoraAd::refreshInterval() const {
    return QtSlot::seconds(slot_.refreshInterval());
}

void VexmoraAd::setRefreshInterval(int seconds) {
    if (QtSlot::setSeconds(slot_, &AdSlot::refreshInterval, &AdSlot::setRefreshInterval, seconds))
        send(&VexmoraAd::refreshIntervalChanged);
}

int VexmoraAd::timeout() const {
    return QtSlot::seconds(slot_.timeout());
}

void VexmoraAd::setFillMode(Vexmora::FillMode mode) {
    if (std::exchange(fillMode_, mode) != mode) Q_EMIT fillModeChanged();
}

void VexmoraAd::setTimeout(int seconds) {
    if (QtSlot::setSeconds(slot_, &AdSlot::timeout, &AdSlot::setTimeout, seconds))
        send(&VexmoraAd::timeoutChanged);
}

int VexmoraAd::expiresAfter() const {
    return QtSlot::seconds(slot_.expiresAfter());
}

void VexmoraAd::setExpiresAfter(int seconds) {
    if (QtSlot::setSeconds(slot_, &AdSlot::expiresAfter, &AdSlot::setExpiresAfter, seconds))
        send(&VexmoraAd::expiresAfterChanged);
}

QString VexmoraAd::textOf(std::string AdSlot::Ad::*text) const {
    return QtSlot::text(slot_, text);
}

void VexmoraAd::reload() {
    slot_.reload();
}

void VexmoraAd::open() {
    slot_.open();
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

// Which item has to be seen for the ad to become viewable.

void VexmoraAd::setItem(QQuickItem* item) {
    if (item == item_) return;
    item_ = item;
    chooseWatched();
    Q_EMIT itemChanged();
}

void VexmoraAd::setStage(QQuickItem* stage) {
    if (stage) slot_.setPresented();
    stage_ = stage;
    presentedView_ = stage ? slot_.view() : nullptr;
    chooseWatched();
    updateVisibility();
}

void VexmoraAd::chooseWatched() {
    if (!QtSlot::isInterstitial(slot_.view().get())) return watcher_->setItem(item_);
    // The screen may still present the previous interstitial.
    watcher_->setItem(slot_.view() == presentedView_ ? stage_ : nullptr);
}

void VexmoraAd::updateVisibility() {
    const QPointer guard(this);
    slot_.setActive(QtSlot::isAppActive());
    if (guard) slot_.setVisibleFraction(watcher_->visibleFraction());
}

}  // namespace VexmoraSDK
