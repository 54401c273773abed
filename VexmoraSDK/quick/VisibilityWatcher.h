// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace VexmoraSDK {

/// Follows how much of an item can be seen: it may be hidden, scrolled out of sight, clipped, or
/// covered by visible items that are painted above it. Looks a moment after its scene has painted a
/// frame, so that a scene in which nothing changes costs nothing. Main thread.
class VisibilityWatcher : public QObject {
    Q_OBJECT

 public:
    VisibilityWatcher();

    /// The item that is watched from now on; absent for none.
    void setItem(QQuickItem* item);
    QQuickItem* item() const { return item_; }

    /// The share of the item's bounding rectangle that can be seen now, from 0 to 1.
    double visibleFraction() const;

 Q_SIGNALS:
    /// The fraction may be another.
    void changed();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void watchWindow(QQuickWindow* window);
    void lookSoon();

    QPointer<QQuickItem> item_;
    QPointer<QQuickWindow> window_;
    QTimer timer_;
};

}  // namespace VexmoraSDK
