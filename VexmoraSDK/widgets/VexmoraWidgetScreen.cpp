// SPDX-License-Identifier: MIT
#include "VexmoraSDK/widgets/VexmoraWidgetScreen.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QAccessibleWidget>
#include <utility>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/presenting/InterstitialLayout.h"
#include "VexmoraSDK/presenting/Presentation.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"

namespace VexmoraSDK {
namespace {

constexpr int kMoveMilliseconds = 250;

/// Draws only the focus frame and lets mouse and touch through.
class CloseKey : public QPushButton {
 public:
    explicit CloseKey(QWidget* parent) : QPushButton(parent) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::TabFocus);
        setAutoDefault(true);  // so that Return presses it too
    }

 protected:
    void paintEvent(QPaintEvent*) override {
        if (!hasFocus()) return;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().highlight(), 3));
        painter.drawEllipse(rect().adjusted(2, 2, -2, -2));
    }
};

bool isCloseKey(QEvent* event) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    return key == Qt::Key_Escape || key == Qt::Key_Back;
}

/// Screen readers know the screen as a dialog.
class AccessibleScreen : public QAccessibleWidget {
 public:
    explicit AccessibleScreen(VexmoraWidgetScreen* screen)
        : QAccessibleWidget(screen, QAccessible::Dialog) {}

    QString text(QAccessible::Text text) const override {
        if (text != QAccessible::Name) return QAccessibleWidget::text(text);
        return QCoreApplication::translate("VexmoraSDK", "Advertisement");
    }

    QAccessible::State state() const override {
        auto state = QAccessibleWidget::state();
        state.modal = true;
        return state;
    }
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* const screen = qobject_cast<VexmoraWidgetScreen*>(object);
    return screen ? new AccessibleScreen(screen) : nullptr;
}

platform::EdgeInsets insetsOf(QMargins margins) {
    return {double(margins.top()), double(margins.left()), double(margins.bottom()),
            double(margins.right())};
}

}  // namespace

VexmoraWidgetScreen::VexmoraWidgetScreen(QWidget* window)
    : QWidget(window),
      presentation_(std::make_unique<Presentation>([this](bool animated) { leave(animated); })),
      closeKey_(new CloseKey(&stage_)) {
    [[maybe_unused]] static const bool accessible =
        (QAccessible::installFactory(makeAccessible), true);
    setAttribute(Qt::WA_NoMousePropagation);
    setFocusPolicy(Qt::ClickFocus);
    // Not that of what it covers.
    setCursor(Qt::ArrowCursor);
    hide();
    window->installEventFilter(this);
    connect(closeKey_, &QPushButton::clicked, this, &QWidget::close);
    // Queued, because all animations stand still while a host's slot runs in this signal. The ad
    // may have been closed since it was emitted.
    const auto hasMoved = [this] {
        if (presentation_->isLeaving() && !isMoving()) leftScreen();
    };
    connect(&movement_, &QPropertyAnimation::finished, this, hasMoved, Qt::QueuedConnection);
    connect(&movement_, &QPropertyAnimation::stateChanged, this,
            &VexmoraWidgetScreen::movingChanged, Qt::QueuedConnection);
    connect(this, &VexmoraWidgetScreen::presentingChanged, this,
            &VexmoraWidgetScreen::closeLabelChanged);
    movement_.setDuration(kMoveMilliseconds);
    movement_.setEasingCurve(QEasingCurve::OutCubic);
}

VexmoraWidgetScreen::~VexmoraWidgetScreen() {
    // Not while all of the window is destroyed, which hides it.
    if (isPresenting() && isVisible()) giveFocusBack();
}

bool VexmoraWidgetScreen::isPresenting() const {
    return presentation_->view() != nullptr;
}

bool VexmoraWidgetScreen::present(VexmoraWidget* ad) {
    if (!ad) return false;
    if (ad->hostView_) return present(ad->hostView_, nullptr, ad->fillMode_);
    return ad->slot().isPresentable() && present(ad->view(), ad, ad->fillMode_);
}

bool VexmoraWidgetScreen::present(std::shared_ptr<VexmoraView> view) {
    return present(std::move(view), nullptr, FillMode::asIs);
}

bool VexmoraWidgetScreen::present(std::shared_ptr<VexmoraView> view, VexmoraWidget* ad,
                                  FillMode fillMode) {
    if (isPresenting() || !view || view->viewType() != VexmoraViewType::interstitial) return false;
    if (!isDrawn(*view) || view->window()) return false;
    presentation_->begin(view);
    stage_.showView(std::move(view));
    stage_.setEnabled(true);
    ad_ = ad;
    fillMode_ = fillMode;
    coverWindow();
    stage_.move(0, height());
    focusedBefore_ = window()->focusWidget();
    raise();
    show();
    moveStage(0);
    if (ad_) ad_->setPresentedOn(&stage_);
    // The host may destroy this screen inside what follows. QWidget::setFocus would crash then, so
    // the other widget loses the focus before.
    const QPointer guard(this);
    if (focusedBefore_) focusedBefore_->clearFocus();
    if (guard) setFocus();
    if (guard) Q_EMIT closeRectChanged();
    if (guard) Q_EMIT presentingChanged();
    return true;
}

void VexmoraWidgetScreen::leave(bool animated) {
    // The screen keeps the focus and ignores keys while the ad leaves.
    const QPointer guard(this);
    if (window()->focusWidget() == closeKey_) setFocus();
    if (!guard) return;
    stage_.setEnabled(false);
    if (animated)
        moveStage(height());
    else
        leftScreen();
}

void VexmoraWidgetScreen::leftScreen() {
    movement_.stop();
    if (ad_) ad_->setPresentedOn(nullptr);
    stage_.showView(nullptr);
    presentation_->end();
    const QPointer guard(this);
    giveFocusBack();
    // The host may present the next ad inside a focus event.
    if (guard && !isPresenting()) hide();
    if (guard) Q_EMIT closeRectChanged();
    if (guard) Q_EMIT presentingChanged();
}

// Focus returns, unless the host has moved it elsewhere since. The window may be inactive.
void VexmoraWidgetScreen::giveFocusBack() {
    const auto* const focused = window()->focusWidget();
    if (focusedBefore_ && (focused == this || focused == closeKey_)) focusedBefore_->setFocus();
}

void VexmoraWidgetScreen::moveStage(int y) {
    movement_.stop();
    movement_.setStartValue(stage_.pos());
    movement_.setEndValue(QPoint(0, y));
    movement_.start();
}

void VexmoraWidgetScreen::coverWindow() {
    setGeometry(parentWidget()->rect());
    stage_.resize(size());
    const auto& view = presentation_->view();
    view->setFrame({{0, 0}, {double(width()), double(height())}});
    view->setSafeAreaInsets(insetsOf(contentsMargins()));
    view->setMirrored(isRightToLeft());
    layOutInterstitial(static_cast<VexmoraView&>(*view), fillMode_, devicePixelRatioF());
    closeKey_->setVisible(closeButton() != nullptr);
    closeKey_->setGeometry(closeRect().toAlignedRect());
    closeKey_->setAccessibleName(closeLabel());
}

void VexmoraWidgetScreen::coverWindowAgain() {
    if (!isPresenting()) return;
    coverWindow();
    Q_EMIT closeRectChanged();
}

QString VexmoraWidgetScreen::closeLabel() const {
    const auto button = closeButton();
    if (!button) return {};
    return QCoreApplication::translate("VexmoraSDK", button->accessibilityLabel().c_str());
}

QRectF VexmoraWidgetScreen::closeRect() const {
    const auto button = closeButton();
    if (!button) return {};
    const auto [origin, size] = button->frame();
    return {origin.x, origin.y, size.width, size.height};
}

std::shared_ptr<platform::Button> VexmoraWidgetScreen::closeButton() const {
    const auto view = std::dynamic_pointer_cast<VexmoraInterstitialView>(presentation_->view());
    return view ? view->closeButton() : nullptr;
}

// The press is queued, so that the host may destroy the screen inside its delegate.
void VexmoraWidgetScreen::closeEvent(QCloseEvent* event) {
    event->ignore();
    platform::MainQueue::main()->async([screen = QPointer(this)] {
        if (!screen || screen->presentation_->isLeaving()) return;
        if (const auto button = screen->closeButton()) button->press();
    });
}

bool VexmoraWidgetScreen::event(QEvent* event) {
    // Otherwise a shortcut of the host would get the key.
    if (event->type() == QEvent::ShortcutOverride && isCloseKey(event)) {
        event->accept();
        return true;
    }
    // The host may destroy the screen inside the signals.
    const QPointer guard(this);
    const bool known = QWidget::event(event);
    switch (guard ? event->type() : QEvent::None) {
        case QEvent::ContentsRectChange:
        case QEvent::LayoutDirectionChange: coverWindowAgain(); break;
        case QEvent::LanguageChange: {
            closeKey_->setAccessibleName(closeLabel());
            QAccessibleEvent renamed(this, QAccessible::NameChanged);
            QAccessible::updateAccessibility(&renamed);
            Q_EMIT closeLabelChanged();
            break;
        }
        default: break;
    }
    return known;
}

bool VexmoraWidgetScreen::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize) coverWindowAgain();
    return false;
}

// Keys that the ad does not use are swallowed. The host's shortcuts still work.
void VexmoraWidgetScreen::keyPressEvent(QKeyEvent* event) {
    if (isCloseKey(event)) close();
}

void VexmoraWidgetScreen::keyReleaseEvent(QKeyEvent*) {}

// Focus stays in the presented ad.
bool VexmoraWidgetScreen::focusNextPrevChild(bool next) {
    if (!isPresenting()) return QWidget::focusNextPrevChild(next);
    if (!presentation_->isLeaving() && closeKey_->isVisible())
        closeKey_->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

}  // namespace VexmoraSDK
