#include "VexmoraSDK/quick/VexmoraScreen.h"

#include <QtCore/QVariantAnimation>
#include <QtQuick/QQuickWindow>
#include <utility>

#include "VexmoraSDK/platform/Button.h"
#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"

namespace VexmoraSDK {

using platform::MainQueue;

/// The way from a presented view to its screen.
class VexmoraScreen::Controller : public platform::ViewController {
 public:
    explicit Controller(VexmoraScreen* screen) : screen_(screen) {}

    void dismiss(bool animated, std::function<void()> completion) override {
        if (screen_) {
            screen_->dismiss(animated, std::move(completion));
        } else {
            MainQueue::main()->async(std::move(completion));
        }
    }

 private:
    QPointer<VexmoraScreen> screen_;
};

/// The item that moves.
class VexmoraScreen::Stage : public ViewItem {
 public:
    explicit Stage(QQuickItem* parent) : ViewItem(parent) {}
    using ViewItem::show;
};

VexmoraScreen::VexmoraScreen(QQuickItem* parent)
    : QQuickItem(parent), stage_(new Stage(this)), window_(std::make_shared<platform::Window>()) {
    window_->setRootViewController(std::make_shared<Controller>(this));
    setFlag(ItemIsFocusScope);
    setClip(true);
}

VexmoraScreen::~VexmoraScreen() {
    if (presented_) presented_->setWindow({});
    if (completion_) MainQueue::main()->async(std::move(completion_));
}

bool VexmoraScreen::present(VexmoraAdView* adView) {
    return adView && present(adView->view());
}

bool VexmoraScreen::present(std::shared_ptr<VexmoraView> view) {
    if (presented_ || !view || view->viewType() != VexmoraViewType::interstitial) return false;
    presented_ = std::move(view);
    presented_->setWindow(window_);
    presented_->setSafeAreaInsets(insets_);
    stage_->show(presented_);
    stage_->setSize({presented_->frame().size.width, presented_->frame().size.height});
    stage_->setEnabled(true);
    setAcceptedMouseButtons(Qt::AllButtons);
    setAcceptTouchEvents(true);
    focusedBefore_ = window() ? window()->activeFocusItem() : nullptr;
    forceActiveFocus();
    move(height(), 0, [] {});
    Q_EMIT presentingChanged();
    Q_EMIT closeRectChanged();
    return true;
}

void VexmoraScreen::close() {
    MainQueue::main()->async([screen = QPointer(this)] {
        if (!screen || screen->dismissing_) return;
        if (const auto button = screen->closeButton()) button->press();
    });
}

void VexmoraScreen::dismiss(bool animated, std::function<void()> completion) {
    if (!presented_ || dismissing_) {
        MainQueue::main()->async(std::move(completion));
        return;
    }
    dismissing_ = true;
    completion_ = std::move(completion);
    stage_->setEnabled(false);
    if (animated) {
        move(stage_->y(), height(), [this] { finishDismissal(); });
    } else {
        finishDismissal();
    }
}

void VexmoraScreen::finishDismissal() {
    setAcceptedMouseButtons(Qt::NoButton);
    setAcceptTouchEvents(false);
    setFocus(false);
    if (focusedBefore_) focusedBefore_->forceActiveFocus();
    stage_->show(nullptr);
    std::exchange(presented_, nullptr)->setWindow({});
    dismissing_ = false;
    // A block of its own: the host may destroy this screen from inside what follows.
    MainQueue::main()->async(std::exchange(completion_, nullptr));
    Q_EMIT presentingChanged();
}

void VexmoraScreen::move(double from, double to, std::function<void()> then) {
    constexpr int kMilliseconds = 250;
    stage_->setY(from);
    // One that is still under way, of the ad moving in, ends here.
    delete stage_->findChild<QVariantAnimation*>();
    auto* animation = new QVariantAnimation(stage_);
    animation->setDuration(kMilliseconds);
    animation->setEasingCurve(QEasingCurve::OutCubic);
    animation->setStartValue(from);
    animation->setEndValue(to);
    connect(animation, &QVariantAnimation::valueChanged, stage_,
            [this](const QVariant& y) { stage_->setY(y.toDouble()); });
    connect(animation, &QVariantAnimation::finished, stage_, std::move(then));
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

void VexmoraScreen::setTopInset(double inset) {
    setInset(&platform::EdgeInsets::top, inset);
}

void VexmoraScreen::setLeftInset(double inset) {
    setInset(&platform::EdgeInsets::left, inset);
}

void VexmoraScreen::setBottomInset(double inset) {
    setInset(&platform::EdgeInsets::bottom, inset);
}

void VexmoraScreen::setRightInset(double inset) {
    setInset(&platform::EdgeInsets::right, inset);
}

void VexmoraScreen::setInset(double platform::EdgeInsets::*edge, double inset) {
    if (qFuzzyCompare(insets_.*edge, inset)) return;
    insets_.*edge = inset;
    if (presented_) presented_->setSafeAreaInsets(insets_);
    Q_EMIT insetsChanged();
    Q_EMIT closeRectChanged();
}

QString VexmoraScreen::closeLabel() const {
    const auto button = closeButton();
    return button ? QString::fromStdString(button->accessibilityLabel()) : QString();
}

QRectF VexmoraScreen::closeRect() const {
    const auto button = closeButton();
    if (!button) return {};
    const auto [origin, size] = button->frame();
    return {origin.x, origin.y, size.width, size.height};
}

std::shared_ptr<platform::Button> VexmoraScreen::closeButton() const {
    const auto interstitial = std::dynamic_pointer_cast<VexmoraInterstitialView>(presented_);
    return interstitial ? interstitial->closeButton() : nullptr;
}

void VexmoraScreen::keyPressEvent(QKeyEvent* event) {
    if (!presented_) {
        event->ignore();
    } else if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Back) {
        close();
    }
}

// What is behind the screen gets nothing of these.
void VexmoraScreen::mousePressEvent(QMouseEvent*) {}
void VexmoraScreen::wheelEvent(QWheelEvent* event) {
    event->setAccepted(isPresenting());
}
void VexmoraScreen::touchEvent(QTouchEvent* event) {
    event->setAccepted(isPresenting());
}

}  // namespace VexmoraSDK
