// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QEvent>
#include <QtGui/QColor>
#include <QtGui/QWindow>
#include <functional>
#include <memory>
#include <set>
#include <utility>

#include "VexmoraSDK/presenting/AdSlot.h"
#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

/// A white window of 400 × 300 with a large focused button, and presenters of ads in front of it.
/// To a user `Quick` and `Widgets` look the same.
class Presenters {
 public:
    using View = std::shared_ptr<VexmoraView>;

    static std::unique_ptr<Presenters> ofQuick();
    static std::unique_ptr<Presenters> ofWidgets();
    virtual ~Presenters() = default;

    /// An item or a widget that shows the view, its top left at (10, 20).
    virtual QObject* addAd(View view) = 0;
    virtual void setView(QObject* ad, View view) = 0;
    virtual QSizeF sizeOf(QObject* ad) = 0;
    /// The slot of an ad that requests by its own properties.
    virtual AdSlot* slotOf(QObject* ad) = 0;
    /// Calls `hear` with the name of each signal that the ad emits.
    virtual void listen(QObject* ad, std::function<void(const char*)> hear) = 0;
    virtual void moveAd(QObject* ad, QPoint to) = 0;
    /// The cursor at a point of the window that the mouse has moved to.
    virtual Qt::CursorShape cursorAt(QPoint point) = 0;
    /// Covers the right half of the window with something opaque, or uncovers it.
    virtual void cover(bool covers) = 0;

    /// The screen that presents interstitial ads.
    virtual QObject* screen() = 0;
    virtual void addScreen() = 0;
    virtual bool present(View view) = 0;
    virtual bool presentAd(QObject* ad) = 0;
    virtual bool isPresenting() = 0;
    virtual void close() = 0;
    virtual void setInsets(int top, int right) = 0;
    virtual void onPresentingChanged(std::function<void()> act) = 0;

    virtual QWindow* window() = 0;
    virtual void resize(QSize size) = 0;
    /// Switches to right-to-left layout.
    virtual void mirror() = 0;
    /// Sets the number of pixels per point.
    virtual void setScale(int scale) = 0;
    /// The visible colour at a point of the window.
    virtual QColor colorAt(double x, double y) = 0;
    virtual QObject* focused() = 0;

    /// Connects the signals that items and widgets have in common.
    template <class Ad>
    static void listenTo(Ad* ad, const std::function<void(const char*)>& hear) {
        const auto on = [&](auto signal, const char* name) {
            QObject::connect(ad, signal, ad, [hear, name] { hear(name); });
        };
        on(&Ad::statusChanged, "statusChanged");
        on(&Ad::errorChanged, "errorChanged");
        on(&Ad::viewableChanged, "viewableChanged");
        on(&Ad::didReceiveAd, "didReceiveAd");
        on(&Ad::didHaveError, "didHaveError");
        on(&Ad::becameViewable, "becameViewable");
        on(&Ad::willLeaveApplication, "willLeaveApplication");
        on(&Ad::willDismissScreen, "willDismissScreen");
        on(&Ad::didDismissScreen, "didDismissScreen");
    }

    /// The number of clicks on the button, and of uses of the host's shortcut for Escape.
    virtual int clicks() = 0;
    virtual int escapes() = 0;
    /// The kinds of input that reached the button since the last call.
    std::set<QEvent::Type> inputs() { return std::exchange(filter_.reached, {}); }

 protected:
    void recordInputsOf(QObject* button) { button->installEventFilter(&filter_); }

 private:
    struct Filter : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            for (const auto type : {QEvent::MouseButtonPress, QEvent::Wheel, QEvent::TouchBegin,
                                    QEvent::KeyPress, QEvent::KeyRelease}) {
                if (event->type() == type) reached.insert(type);
            }
            return false;
        }
        std::set<QEvent::Type> reached;
    };
    Filter filter_;
};

}  // namespace VexmoraSDK
