// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QtCore/QPointer>
#include <QtCore/QPropertyAnimation>
#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtQuick/QQuickItem>
#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"
#include "VexmoraSDK/quick/VexmoraAdItem.h"

namespace VexmoraSDK {

class Presentation;

namespace platform {
class Button;
}  // namespace platform

/// Presents interstitial ads over the rest of the scene, one at a time. An ad moves in from below,
/// and out again when it is closed by its close button, Escape or Back. While it is presented, it
/// has the focus and the items behind it get no touches or keys; the host's shortcuts still work.
/// The screen should fill the window, in front of all else. The ad fills the screen, its picture in
/// the middle; a tap on it anywhere but on the close button does nothing. With `LayoutMirroring`
/// the close button is on the other side. The screen may be destroyed at any time, from inside its
/// own signals and those of its ad too. Main thread.
class VEXMORA_EXPORT VexmoraScreenItem : public QQuickItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(VexmoraScreen)

    /// True from the call of `present` until the ad has moved out.
    Q_PROPERTY(bool presenting READ isPresenting NOTIFY presentingChanged FINAL)
    /// True while the ad moves in or out.
    Q_PROPERTY(bool moving READ isMoving NOTIFY movingChanged FINAL)
    /// The depth in points of a notch or a rounded corner at each edge. Close buttons stay clear of
    /// it.
    Q_PROPERTY(double topInset READ topInset WRITE setTopInset NOTIFY insetsChanged FINAL)
    Q_PROPERTY(double leftInset READ leftInset WRITE setLeftInset NOTIFY insetsChanged FINAL)
    Q_PROPERTY(double bottomInset READ bottomInset WRITE setBottomInset NOTIFY insetsChanged FINAL)
    Q_PROPERTY(double rightInset READ rightInset WRITE setRightInset NOTIFY insetsChanged FINAL)
    /// The close button's label for screen readers, and its rectangle; empty without a button.
    Q_PROPERTY(QString closeLabel READ closeLabel NOTIFY closeLabelChanged FINAL)
    Q_PROPERTY(QRectF closeRect READ closeRect NOTIFY closeRectChanged FINAL)

 public:
    explicit VexmoraScreenItem(QQuickItem* parent = nullptr);
    ~VexmoraScreenItem() override;

    /// Presents the ad of a `VexmoraAdItem` or a `VexmoraAd`. Returns false and does nothing if the
    /// ad is no interstitial, is not drawn, is older than its `expiresAfter` or was presented
    /// before, or if the screen still presents another. `fillMode: Vexmora.FillMode.Fit` scales the
    /// picture to the size of its ad type.
    Q_INVOKABLE bool present(QObject* ad);
    /// Presents a view that the host has made with the factory. It may have any age and must be in
    /// no window.
    bool present(std::shared_ptr<VexmoraView> view);
    /// Taps the close button of the ad that is presented.
    Q_SLOT void close();

    bool isPresenting() const;
    bool isMoving() const { return movement_.state() == QPropertyAnimation::Running; }
    double topInset() const { return insets_.top; }
    void setTopInset(double inset);
    double leftInset() const { return insets_.left; }
    void setLeftInset(double inset);
    double bottomInset() const { return insets_.bottom; }
    void setBottomInset(double inset);
    double rightInset() const { return insets_.right; }
    void setRightInset(double inset);
    QString closeLabel() const;
    QRectF closeRect() const;

 Q_SIGNALS:
    void presentingChanged();
    void movingChanged();
    void insetsChanged();
    void closeLabelChanged();
    void closeRectChanged();

 protected:
    bool event(QEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void touchEvent(QTouchEvent* event) override;

 private:
    class Stage;
    class CloseKey;

    bool present(std::shared_ptr<VexmoraView> view, VexmoraAd* ad, FillMode fillMode);
    void layOut();
    Q_SLOT void layOutAgain();
    void updateAccessibility();
    void leave(bool animated);
    void leftScreen();
    void giveFocusBack();
    void moveStage(double to);
    void setInset(double platform::EdgeInsets::*edge, double inset);
    std::shared_ptr<platform::Button> closeButton() const;

    const std::unique_ptr<Presentation> presentation_;
    /// The item that moves.
    Stage* const stage_;
    /// The close button for keyboard and screen readers. Taps reach the ad's own button.
    CloseKey* const closeKey_;
    QPropertyAnimation movement_;
    /// The presented ad; absent for a view set by the host.
    QPointer<VexmoraAd> ad_;
    FillMode fillMode_ = FillMode::asIs;
    /// The item that had focus before; it gets it back.
    QPointer<QQuickItem> focusedBefore_;
    platform::EdgeInsets insets_;
    const std::unique_ptr<AccessibleItem> accessible_;
};

}  // namespace VexmoraSDK
