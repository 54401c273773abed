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

/// A white window of 400 × 300 with a large button, which has the keyboard, and what presents ads
/// in front of it. `Quick` and `Widgets` are the same to a user.
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
    /// The slot of an ad that its own properties ask for.
    virtual AdSlot* slotOf(QObject* ad) = 0;
    /// From now on `hear` is called with the name of every signal of the ad's.
    virtual void listen(QObject* ad, std::function<void(const char*)> hear) = 0;
    virtual void moveAd(QObject* ad, QPoint to) = 0;
    /// Lays something opaque over the right half of the window, or takes it away.
    virtual void cover(bool covers) = 0;

    /// The screen that interstitial ads are presented on; there is one at first.
    virtual QObject* screen() = 0;
    virtual void addScreen() = 0;
    virtual bool present(View view) = 0;
    virtual bool presentAd(QObject* ad) = 0;
    virtual bool isPresenting() = 0;
    virtual void close() = 0;
    virtual void setInsets(int top, int right) = 0;

    virtual QWindow* window() = 0;
    virtual void resize(QSize size) = 0;
    /// From now on all is laid out from right to left.
    virtual void mirror() = 0;
    /// From now on so many pixels are a point.
    virtual void setScale(int scale) = 0;
    /// The colour that is seen at a point of the window.
    virtual QColor colorAt(double x, double y) = 0;
    virtual QObject* focused() = 0;

    /// Connects the signals that items and widgets have in common.
    template <class Ad>
    static void listenTo(Ad* ad, const std::function<void(const char*)>& hear) {
        const auto on = [&](auto signal, const char* name) {
            QObject::connect(ad, signal, ad, [hear, name] { hear(name); });
        };
        on(&Ad::statusChanged, "statusChanged");
        on(&Ad::didReceiveAd, "didReceiveAd");
        on(&Ad::didHaveError, "didHaveError");
        on(&Ad::becameViewable, "becameViewable");
        on(&Ad::willLeaveApplication, "willLeaveApplication");
        on(&Ad::willDismissScreen, "willDismissScreen");
        on(&Ad::didDismissScreen, "didDismissScreen");
    }

    /// How often the button was clicked, and how often the host's shortcut for Escape was typed.
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
