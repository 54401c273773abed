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

/// Where interstitial ads are presented, one at a time, over a window: an ad moves in from below
/// and out again when it is closed, by its close button, Escape or Back. While it is there nothing
/// behind it is touched and it has the keyboard. Close buttons stay clear of the screen's contents
/// margins, on the left when the screen is laid out from right to left. A tap anywhere else on the
/// ad does nothing. The screen may be destroyed at any time, from inside the operations of the
/// view's delegate too. Main thread.
class VEXMORA_EXPORT VexmoraWidgetScreen : public QWidget {
    Q_OBJECT

    /// From the call of `present` until the ad has moved out.
    Q_PROPERTY(bool presenting READ isPresenting NOTIFY presentingChanged FINAL)

 public:
    /// A child of `window`, which owns it. Covers all of `window` while it presents and is hidden
    /// otherwise.
    explicit VexmoraWidgetScreen(QWidget* window);
    ~VexmoraWidgetScreen() override;

    /// Presents the interstitial ad of a widget, which need not be shown itself. False, and nothing
    /// done, when the ad is not drawn, older than the slot's `expiresAfter` or was presented
    /// before, or the screen still presents another.
    bool present(VexmoraWidget* ad);
    /// The same for a view that the host has made with the factory. It may be of any age and is in
    /// no window yet.
    bool present(std::shared_ptr<VexmoraView> view);

    bool isPresenting() const;

 Q_SIGNALS:
    void presentingChanged();

 protected:
    /// `close()` taps the close button.
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;

 private:
    bool present(std::shared_ptr<VexmoraView> view, VexmoraWidget* ad);
    void coverWindow();
    void nameCloseKey();
    std::shared_ptr<platform::Button> closeButton() const;
    void moveStage(int y);
    void leave(bool animated);
    void leftScreen();

    const std::unique_ptr<Presentation> presentation_;
    /// The widget that moves.
    VexmoraWidget stage_{this};
    QPropertyAnimation movement_{&stage_, "pos"};
    /// Whose ad is presented; absent for a view of the host's.
    QPointer<VexmoraWidget> ad_;
    /// The close button for the keyboard and for screen readers; fingers touch that of the view.
    QPushButton* const closeKey_;
    /// What had the keyboard before, to have it again.
    QPointer<QWidget> focusedBefore_;
};

}  // namespace VexmoraSDK
