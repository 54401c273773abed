// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <optional>

#include "VexmoraSDK/presenting/AdSlot.h"

/// What items and widgets have in common: their slot in terms of Qt's properties and signals. Main
/// thread.
namespace VexmoraSDK::QtSlot {

inline bool isInterstitial(const VexmoraView* view) {
    return view && view->viewType() == VexmoraViewType::interstitial;
}

/// A desktop app without focus is inactive and still visible.
inline bool isAppActive() {
    const auto state = QGuiApplication::applicationState();
    return state == Qt::ApplicationActive || state == Qt::ApplicationInactive;
}

/// The value of a property for an ad type or view type; 0 means none.
template <class Type>
int rawFrom(std::optional<Type> type) {
    return type ? int(*type) : 0;
}
template <class Type>
std::optional<Type> typeFrom(int raw) {
    return raw == 0 ? std::nullopt : std::optional(Type{raw});
}

template <class Status>
Status status(const AdSlot& slot) {
    switch (slot.state()) {
        case AdSlot::State::loading: return Status::Loading;
        case AdSlot::State::ready: return Status::Ready;
        case AdSlot::State::failed: return Status::Error;
        default: return Status::Null;
    }
}

inline int errorCode(const AdSlot& slot) {
    return slot.failure() ? int(slot.failure()->code) : 0;
}

inline QString errorString(const AdSlot& slot) {
    return slot.failure() ? QString::fromStdString(slot.failure()->description) : QString();
}

inline QString text(const AdSlot& slot, std::string AdSlot::Ad::*text) {
    return slot.ad() ? QString::fromStdString((*slot.ad()).*text) : QString();
}

inline int seconds(AdSlot::Duration duration) {
    return int(std::chrono::floor<std::chrono::seconds>(duration).count());
}

/// Sets one of a slot's times. Returns whether the time has changed.
inline bool setSeconds(AdSlot& slot, AdSlot::Duration (AdSlot::*get)() const,
                       void (AdSlot::*set)(AdSlot::Duration), int value) {
    const int before = seconds((slot.*get)());
    (slot.*set)(std::chrono::seconds(value));
    return seconds((slot.*get)()) != before;
}

/// Sets a timer to the slot's next `wake`.
inline void arm(QTimer& timer, const AdSlot& slot) {
    if (const auto wait = slot.untilNextWake())
        timer.start(*wait);
    else
        timer.stop();
}

/// Makes a slot's callbacks emit a presenter's signals of the same names. The host may destroy the
/// presenter inside a signal: `announce` emits the given signals in order until that happens.
template <class Presenter, class Announce>
AdSlot::Delegate delegateOf(Presenter* presenter, Announce announce) {
    const auto tells = [announce](void (Presenter::*signal)()) {
        return [announce, signal](VexmoraView&) { announce({signal}); };
    };
    AdSlot::Delegate delegate;
    delegate.willShowScreen = tells(&Presenter::willShowScreen);
    delegate.willDismissScreen = tells(&Presenter::willDismissScreen);
    delegate.didDismissScreen = tells(&Presenter::didDismissScreen);
    delegate.didReceiveAd = [announce](VexmoraView&) {
        announce({&Presenter::errorChanged, &Presenter::didReceiveAd});
    };
    delegate.didHaveError = [presenter](VexmoraView&, const VexmoraError& error) {
        const auto [code, description] = AdSlot::Failure::of(error);
        Q_EMIT presenter->didHaveError(int(code), QString::fromStdString(description));
    };
    delegate.willLeaveApplication = [presenter](VexmoraView&) {
        Q_EMIT presenter->willLeaveApplication(text(presenter->slot(), &AdSlot::Ad::clickUrl));
    };
    delegate.stateChanged = [announce] {
        announce({&Presenter::errorChanged, &Presenter::statusChanged});
    };
    delegate.failed = [announce](const AdSlot::Failure&) { announce({&Presenter::errorChanged}); };
    delegate.becameViewable = [announce] {
        announce({&Presenter::viewableChanged, &Presenter::becameViewable});
    };
    return delegate;
}

}  // namespace VexmoraSDK::QtSlot
