// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace VexmoraSDK {

/// Follows the visible fraction of an item, which may be hidden, scrolled out of sight, clipped, or
/// covered by visible items painted above it. It checks shortly after its scene has painted a
/// frame, so a scene without changes costs nothing. Main thread.
class VisibilityWatcher : public QObject {
    Q_OBJECT

 public:
    VisibilityWatcher();

    /// Watches `item`, or nothing if it is null.
    void setItem(QQuickItem* item);
    QQuickItem* item() const { return item_; }

    /// The visible fraction of the item's bounding rectangle, from 0 to 1.
    double visibleFraction() const;

 Q_SIGNALS:
    /// The fraction may have changed.
    void changed();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void watchWindow(QQuickWindow* window);
    void lookSoon();

    QPointer<QQuickItem> item_;
    QPointer<QQuickWindow> window_;
    QPointer<QWindow> shownIn_;
    QTimer timer_;
};

}  // namespace VexmoraSDK
