#include "VexmoraSDK/widgets/VexmoraWidgetScreen.h"

#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <utility>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/presenting/Presentation.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"

namespace VexmoraSDK {
namespace {

constexpr int kMoveMilliseconds = 250;

/// Shows nothing but that it has the keyboard, and lets fingers through.
class CloseKey : public QPushButton {
 public:
    explicit CloseKey(QWidget* parent) : QPushButton(parent) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::TabFocus);
        setAutoDefault(true);  // Return presses it too.
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

platform::EdgeInsets insetsOf(QMargins margins) {
    return {double(margins.top()), double(margins.left()), double(margins.bottom()),
            double(margins.right())};
}

}  // namespace

VexmoraWidgetScreen::VexmoraWidgetScreen(QWidget* window)
    : QWidget(window),
      presentation_(std::make_unique<Presentation>([this](bool animated) { leave(animated); })),
      closeKey_(new CloseKey(&stage_)) {
    setAttribute(Qt::WA_NoMousePropagation);
    setFocusPolicy(Qt::ClickFocus);
    hide();
    window->installEventFilter(this);
    connect(closeKey_, &QPushButton::clicked, this, &QWidget::close);
    connect(&movement_, &QPropertyAnimation::finished, this, [this] {
        if (presentation_->isLeaving()) leftScreen();
    });
    movement_.setDuration(kMoveMilliseconds);
    movement_.setEasingCurve(QEasingCurve::OutCubic);
}

VexmoraWidgetScreen::~VexmoraWidgetScreen() = default;

platform::Rect VexmoraWidgetScreen::viewFrame() const {
    const QSize size = parentWidget()->size();
    return {{0, 0}, {double(size.width()), double(size.height())}};
}

bool VexmoraWidgetScreen::isPresenting() const {
    return presentation_->view() != nullptr;
}

bool VexmoraWidgetScreen::present(std::shared_ptr<VexmoraView> view) {
    if (isPresenting() || !view || view->viewType() != VexmoraViewType::interstitial) return false;
    presentation_->begin(view);
    stage_.setView(std::move(view));
    stage_.setEnabled(true);
    coverWindow();
    stage_.move(0, height());
    focusedBefore_ = window()->focusWidget();
    raise();
    show();
    setFocus();
    moveStage(0);
    return true;
}

void VexmoraWidgetScreen::leave(bool animated) {
    // The keyboard stays here, and does nothing.
    if (closeKey_->hasFocus()) setFocus();
    stage_.setEnabled(false);
    if (animated)
        moveStage(height());
    else
        leftScreen();
}

void VexmoraWidgetScreen::leftScreen() {
    movement_.stop();
    stage_.setView(nullptr);
    presentation_->end();
    if (hasFocus() && focusedBefore_) focusedBefore_->setFocus();
    hide();
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
    presentation_->view()->setSafeAreaInsets(insetsOf(contentsMargins()));
    const auto button = closeButton();
    closeKey_->setVisible(button != nullptr);
    if (!button) return;
    const auto [origin, size] = button->frame();
    closeKey_->setGeometry(QRectF(origin.x, origin.y, size.width, size.height).toAlignedRect());
    closeKey_->setAccessibleName(QString::fromStdString(button->accessibilityLabel()));
}

std::shared_ptr<platform::Button> VexmoraWidgetScreen::closeButton() const {
    const auto view = std::dynamic_pointer_cast<VexmoraInterstitialView>(presentation_->view());
    return view ? view->closeButton() : nullptr;
}

// The button is pressed later, so that a host may destroy the screen while it hears of it.
void VexmoraWidgetScreen::closeEvent(QCloseEvent* event) {
    event->ignore();
    platform::MainQueue::main()->async([screen = QPointer(this)] {
        if (!screen || screen->presentation_->isLeaving()) return;
        if (const auto button = screen->closeButton()) button->press();
    });
}

bool VexmoraWidgetScreen::event(QEvent* event) {
    // Otherwise a shortcut of the host's would get the key.
    if (event->type() == QEvent::ShortcutOverride && isCloseKey(event)) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

bool VexmoraWidgetScreen::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize && isPresenting()) {
        presentation_->view()->setFrame(viewFrame());
        coverWindow();
    }
    return QWidget::eventFilter(watched, event);
}

// No key reaches what is behind the screen.
void VexmoraWidgetScreen::keyPressEvent(QKeyEvent* event) {
    if (isCloseKey(event)) close();
}

void VexmoraWidgetScreen::keyReleaseEvent(QKeyEvent*) {}

// The keyboard stays with the ad as long as it is there.
bool VexmoraWidgetScreen::focusNextPrevChild(bool next) {
    if (!isPresenting()) return QWidget::focusNextPrevChild(next);
    if (!presentation_->isLeaving() && closeKey_->isVisible())
        closeKey_->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

}  // namespace VexmoraSDK
