// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>
#include <QtCore/QPropertyAnimation>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QWidget>
#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/views/VexmoraView.h"
#include "VexmoraSDK/widgets/VexmoraWidget.h"

namespace VexmoraSDK {

class Presentation;

namespace platform {
class Button;
}  // namespace platform

/// Presents interstitial ads over a window, one at a time. An ad moves in from below, and out again
/// when it is closed by its close button, Escape or Back. While it is presented, it has the focus
/// and the widgets behind it get no touches or keys; the host's shortcuts still work. Close buttons
/// stay clear of the screen's contents margins, and are on the left in right-to-left layouts. A tap
/// anywhere else on the ad does nothing. The screen may be destroyed at any time, from inside the
/// operations of the view's delegate too. Main thread.
class VEXMORA_EXPORT VexmoraWidgetScreen : public QWidget {
    Q_OBJECT

    /// True from the call of `present` until the ad has moved out.
    Q_PROPERTY(bool presenting READ isPresenting NOTIFY presentingChanged FINAL)
    /// While the ad moves in or out.
    Q_PROPERTY(bool moving READ isMoving NOTIFY movingChanged FINAL)
    /// What screen readers say of the close button, and where it is; empty when there is none.
    Q_PROPERTY(QString closeLabel READ closeLabel NOTIFY closeLabelChanged FINAL)
    Q_PROPERTY(QRectF closeRect READ closeRect NOTIFY closeRectChanged FINAL)

 public:
    /// Makes a child of `window`, which owns it. The screen covers all of `window` while it
    /// presents and is hidden otherwise.
    explicit VexmoraWidgetScreen(QWidget* window);
    ~VexmoraWidgetScreen() override;

    /// Presents the interstitial ad of a widget, which need not be visible. Returns false and does
    /// nothing if the ad is not drawn, is older than the slot's `expiresAfter` or was presented
    /// before, or if the screen still presents another.
    bool present(VexmoraWidget* ad);
    /// Presents a view that the host has made with the factory. It may have any age and must be in
    /// no window.
    bool present(std::shared_ptr<VexmoraView> view);

    bool isPresenting() const;
    bool isMoving() const { return movement_.state() == QPropertyAnimation::Running; }
    QString closeLabel() const;
    QRectF closeRect() const;

 Q_SIGNALS:
    void presentingChanged();
    void movingChanged();
    void closeLabelChanged();
    void closeRectChanged();

 protected:
    /// Makes `close()` tap the close button.
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;

 private:
    bool present(std::shared_ptr<VexmoraView> view, VexmoraWidget* ad, FillMode fillMode);
    void coverWindow();
    void coverWindowAgain();
    std::shared_ptr<platform::Button> closeButton() const;
    void moveStage(int y);
    void leave(bool animated);
    void leftScreen();
    void giveFocusBack();

    const std::unique_ptr<Presentation> presentation_;
    /// The widget that moves.
    VexmoraWidget stage_{this};
    QPropertyAnimation movement_{&stage_, "pos"};
    /// The widget whose ad is presented; absent for a view set by the host.
    QPointer<VexmoraWidget> ad_;
    FillMode fillMode_ = FillMode::asIs;
    /// The close button for keyboard and screen readers. Taps reach the view's own button.
    QPushButton* const closeKey_;
    /// The widget that had focus before; it gets it back.
    QPointer<QWidget> focusedBefore_;
};

}  // namespace VexmoraSDK
