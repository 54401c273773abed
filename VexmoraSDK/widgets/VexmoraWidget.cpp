// SPDX-License-Identifier: MIT
#include "VexmoraSDK/widgets/VexmoraWidget.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QStyleHints>
#include <QtGui/QWindow>
#include <QtWidgets/QAccessibleWidget>
#include <cmath>
#include <utility>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/qt/ViewPainter.h"
#include "VexmoraSDK/presenting/NativeTexts.h"
#include "VexmoraSDK/presenting/QtSlot.h"
#include "VexmoraSDK/presenting/TapTarget.h"

namespace VexmoraSDK {
namespace {

using platform::Size;
using QtSlot::isInterstitial;

platform::Color colorFrom(const QColor& color) {
    return {color.redF(), color.greenF(), color.blueF(), color.alphaF()};
}

Size sizeFrom(QSize size) {
    return {double(size.width()), double(size.height())};
}

double area(const QRect& rect) {
    return double(rect.width()) * rect.height();
}

}  // namespace

/// Screen readers know an ad as a link, an interstitial on its screen as a picture, and nothing
/// where there is neither.
class VexmoraWidget::Accessible : public QAccessibleWidget {
 public:
    static QAccessibleInterface* create(const QString&, QObject* object) {
        auto* const ad = qobject_cast<VexmoraWidget*>(object);
        return ad ? new Accessible(ad) : nullptr;
    }

    QAccessible::Role role() const override {
        return isInterstitial(ad().view_.get()) ? QAccessible::Graphic : QAccessible::Link;
    }

    QAccessible::State state() const override {
        auto state = QAccessibleWidget::state();
        if (!ad().view_) state.invisible = true;
        return state;
    }

    QString text(QAccessible::Text text) const override {
        if (text != QAccessible::Name) return QAccessibleWidget::text(text);
        auto word = QCoreApplication::translate("VexmoraSDK", "Advertisement");
        if (!ad().view_) return word;
        return QString::fromStdString(VexmoraSDK::accessibleName(word.toStdString(), *ad().view_));
    }

    QStringList actionNames() const override {
        return role() == QAccessible::Link ? QStringList{pressAction()} : QStringList();
    }

    void doAction(const QString& name) override {
        if (name == pressAction()) ad().press();
    }

 private:
    explicit Accessible(VexmoraWidget* ad) : QAccessibleWidget(ad) {}

    VexmoraWidget& ad() const { return *static_cast<VexmoraWidget*>(widget()); }
};

VexmoraWidget::VexmoraWidget(QWidget* parent) : QWidget(parent), slot_(slotDelegate()) {
    [[maybe_unused]] static const bool accessible =
        (QAccessible::installFactory(&Accessible::create), true);
    // The widget may be smaller than the ad, so that a server cannot size the window.
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
    setMouseTracking(true);
    wakeTimer_.setSingleShot(true);
    connect(&wakeTimer_, &QTimer::timeout, this, [this] {
        updateVisibility();
        slot_.setScreenSize(sizeFrom(window()->size()));
        slot_.wake();
    });
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            &VexmoraWidget::updateVisibility);
}

VexmoraWidget::VexmoraWidget(std::shared_ptr<VexmoraView> view, QWidget* parent)
    : VexmoraWidget(parent) {
    setView(std::move(view));
}

VexmoraWidget::~VexmoraWidget() {
    if (view_) view_->setDisplayCallback({});
}

// The slot's callbacks. The host may destroy the widget inside each signal.

AdSlot::Delegate VexmoraWidget::slotDelegate() {
    auto delegate = QtSlot::delegateOf(
        this, [this](std::initializer_list<void (VexmoraWidget::*)()> all) { announce(all); });
    delegate.nextWakeChanged = [this] { QtSlot::arm(wakeTimer_, slot_); };
    return delegate;
}

void VexmoraWidget::announce(std::initializer_list<void (VexmoraWidget::*)()> signalsInOrder) {
    const QPointer guard(this);
    const auto about = slot_.view();
    if (adView_ != about) {
        adView_ = slot_.view();
        applyTextColors();
        if (!hostView_) showInPlace(adView_);
        Q_EMIT adChanged();
        if (guard) Q_EMIT viewableChanged();
    }
    // A host that asks for something else meanwhile hears no more of the ad.
    for (const auto signal : signalsInOrder)
        if (guard && slot_.view() == about) Q_EMIT(this->*signal)();
}

// The placement.

template <class Value>
void VexmoraWidget::changePlacement(Value AdSlot::Placement::*member, Value value,
                                    void (VexmoraWidget::*changed)()) {
    if (placement_.*member == value) return;
    placement_.*member = std::move(value);
    // A view set by the host is removed like the slot's own.
    if (std::exchange(hostView_, nullptr)) showView(nullptr);
    const QPointer guard(this);
    slot_.setPlacement(placement_);
    if (!guard) return;
    updateGeometry();
    Q_EMIT(this->*changed)();
}

QString VexmoraWidget::containerId() const {
    return QString::fromStdString(placement_.containerId);
}

void VexmoraWidget::setContainerId(const QString& containerId) {
    changePlacement(&AdSlot::Placement::containerId, containerId.toStdString(),
                    &VexmoraWidget::containerIdChanged);
}

QString VexmoraWidget::adSize() const {
    return QString::fromStdString(placement_.adSize);
}

void VexmoraWidget::setAdSize(const QString& adSize) {
    if (adSize != this->adSize() && !adSize.isEmpty() &&
        !adViewBySize().contains(adSize.toStdString()))
        qWarning("VexmoraWidget: there are no ads of the size \"%s\"", qPrintable(adSize));
    changePlacement(&AdSlot::Placement::adSize, adSize.toStdString(),
                    &VexmoraWidget::adSizeChanged);
}

int VexmoraWidget::adType() const {
    return QtSlot::rawFrom(placement_.adType);
}

void VexmoraWidget::setAdType(int adType) {
    changePlacement(&AdSlot::Placement::adType, QtSlot::typeFrom<VexmoraAdType>(adType),
                    &VexmoraWidget::adTypeChanged);
}

int VexmoraWidget::viewType() const {
    return QtSlot::rawFrom(placement_.viewType);
}

void VexmoraWidget::setViewType(int viewType) {
    changePlacement(&AdSlot::Placement::viewType, QtSlot::typeFrom<VexmoraViewType>(viewType),
                    &VexmoraWidget::viewTypeChanged);
}

void VexmoraWidget::setView(std::shared_ptr<VexmoraView> view) {
    const QPointer guard(this);
    hostView_ = std::move(view);
    slot_.setPlacement({});
    if (guard) showInPlace(hostView_);
}

void VexmoraWidget::reload() {
    slot_.reload();
}

VexmoraWidget::Status VexmoraWidget::status() const {
    return QtSlot::status<Status>(slot_);
}

int VexmoraWidget::errorCode() const {
    return QtSlot::errorCode(slot_);
}

QString VexmoraWidget::errorString() const {
    return QtSlot::errorString(slot_);
}

int VexmoraWidget::refreshInterval() const {
    return QtSlot::seconds(slot_.refreshInterval());
}

void VexmoraWidget::setRefreshInterval(int seconds) {
    if (QtSlot::setSeconds(slot_, &AdSlot::refreshInterval, &AdSlot::setRefreshInterval, seconds))
        Q_EMIT refreshIntervalChanged();
}

int VexmoraWidget::timeout() const {
    return QtSlot::seconds(slot_.timeout());
}

void VexmoraWidget::setTimeout(int seconds) {
    if (QtSlot::setSeconds(slot_, &AdSlot::timeout, &AdSlot::setTimeout, seconds))
        Q_EMIT timeoutChanged();
}

int VexmoraWidget::expiresAfter() const {
    return QtSlot::seconds(slot_.expiresAfter());
}

void VexmoraWidget::setExpiresAfter(int seconds) {
    if (QtSlot::setSeconds(slot_, &AdSlot::expiresAfter, &AdSlot::setExpiresAfter, seconds))
        Q_EMIT expiresAfterChanged();
}

// The view on show.

const std::shared_ptr<VexmoraView>& VexmoraWidget::view() const {
    return hostView_ ? hostView_ : adView_;
}

void VexmoraWidget::showInPlace(std::shared_ptr<VexmoraView> view) {
    showView(isInterstitial(view.get()) ? nullptr : std::move(view));
}

void VexmoraWidget::showView(std::shared_ptr<VexmoraView> view) {
    if (view_) view_->setDisplayCallback({});
    // A press on the previous view must not become a tap on this one.
    taps_.cancel();
    unsetCursor();
    view_ = std::move(view);
    if (view_) view_->setDisplayCallback([this] { viewChanged(); });
    viewChanged();
    nameChanged();
}

void VexmoraWidget::nameChanged() {
    QAccessibleEvent renamed(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&renamed);
}

void VexmoraWidget::viewChanged() {
    updateGeometry();
    update();
    const bool tappable =
        view_ && !isInterstitial(view_.get()) && !view_->gestureRecognizers().empty();
    if (std::exchange(tappable_, tappable) != tappable)
        setFocusPolicy(tappable ? Qt::TabFocus : Qt::NoFocus);
    updateVisibility();
}

void VexmoraWidget::setFillMode(FillMode mode) {
    if (fillMode() == mode) return;
    fillMode_ = VexmoraSDK::FillMode(mode);
    QSizePolicy policy(QSizePolicy::Maximum, QSizePolicy::Maximum);
    if (mode == FillMode::Fit) {
        policy = {QSizePolicy::Preferred, QSizePolicy::Preferred};
        policy.setHeightForWidth(true);
    }
    setSizePolicy(policy);
    viewChanged();
    Q_EMIT fillModeChanged();
}

void VexmoraWidget::setTextColor(const QColor& color) {
    if (std::exchange(textColor_, color) == color) return;
    applyTextColors();
    Q_EMIT textColorChanged();
}

void VexmoraWidget::setSecondaryTextColor(const QColor& color) {
    if (std::exchange(secondaryTextColor_, color) == color) return;
    applyTextColors();
    Q_EMIT secondaryTextColorChanged();
}

void VexmoraWidget::applyTextColors() {
    if (!adView_) return;
    const auto chosen = [this](const QColor& color, QPalette::ColorRole role) {
        return colorFrom(color.isValid() ? color : palette().color(role));
    };
    setTextColors(*adView_, {chosen(textColor_, QPalette::WindowText),
                             chosen(secondaryTextColor_, QPalette::PlaceholderText)});
}

QSize VexmoraWidget::sizeHint() const {
    const auto [width, height] =
        preferredSize(fillMode_, view_ ? view_->frame().size : Size(), placement_.reservedSize());
    return QSize(qCeil(width), qCeil(height)).boundedTo({kMaxSizeHint, kMaxSizeHint});
}

int VexmoraWidget::heightForWidth(int width) const {
    const QSize hint = sizeHint();
    if (hint.isEmpty()) return hint.height();
    return qMin(qCeil(double(width) * hint.height() / hint.width()), kMaxSizeHint);
}

AdPosition VexmoraWidget::position() const {
    auto position =
        AdPosition::of(fillMode_, view_->frame().size, sizeFrom(size()), isRightToLeft());
    // The ad begins at a whole pixel of the screen, so that it stays sharp.
    const double pixels = devicePixelRatioF();
    auto& [x, y] = position.origin;
    x = std::round(x * pixels) / pixels;
    y = std::round(y * pixels) / pixels;
    return position;
}

void VexmoraWidget::paintEvent(QPaintEvent*) {
    if (!view_) return;
    QPainter painter(this);
    const auto [origin, scale] = position();
    painter.save();
    painter.translate(origin.x, origin.y);
    painter.scale(scale, scale);
    platform::paintView(painter, *view_);
    painter.restore();
    if (!hasFocus()) return;
    painter.setPen(QPen(palette().highlight(), 4));
    painter.drawRect(adRect());
}

QRect VexmoraWidget::adRect() const {
    if (!view_) return rect();
    const auto [origin, scale] = position();
    const auto [width, height] = view_->frame().size;
    return QRectF(origin.x, origin.y, width * scale, height * scale).toAlignedRect();
}

// Visibility.

void VexmoraWidget::setPresentedOn(VexmoraWidget* stage) {
    if (stage) slot_.setPresented();
    stage_ = stage;
    watchWindow();
    updateVisibility();
}

// Covering or uncovering a widget repaints its window.
void VexmoraWidget::watchWindow() {
    auto* const next = stage_ ? stage_->window() : window();
    for (QObject* former :
         {static_cast<QObject*>(watchedWindow_), static_cast<QObject*>(watchedHandle_)})
        if (former) former->removeEventFilter(this);
    watchedWindow_ = next;
    watchedHandle_ = next->windowHandle();
    next->installEventFilter(this);
    if (watchedHandle_) watchedHandle_->installEventFilter(this);
}

bool VexmoraWidget::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::UpdateRequest:
        case QEvent::WindowStateChange:
        case QEvent::Expose:
        case QEvent::Show:
        case QEvent::Hide: updateVisibility(); break;
        default: break;
    }
    return QWidget::eventFilter(watched, event);
}

bool VexmoraWidget::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::Show: watchWindow(); [[fallthrough]];
        case QEvent::Hide: updateVisibility(); break;
        case QEvent::PaletteChange: applyTextColors(); break;
        case QEvent::LanguageChange: nameChanged(); break;
        case QEvent::LayoutDirectionChange: viewChanged(); break;
        default: break;
    }
    return QWidget::event(event);
}

void VexmoraWidget::updateVisibility() {
    slot_.setActive(QtSlot::isAppActive());
    slot_.setVisibleFraction(visibleFraction());
}

double VexmoraWidget::visibleFraction() const {
    const bool onScreen = isInterstitial(adView_.get());
    // The screen may still present the previous interstitial.
    if (onScreen && (!stage_ || stage_->view_ != adView_)) return 0;
    const QWidget& shownOn = onScreen ? *stage_ : *this;
    const auto* const handle = shownOn.window()->windowHandle();
    if (!shownOn.isVisible() || shownOn.window()->isMinimized()) return 0;
    if (handle && !handle->isExposed()) return 0;

    const QRect ad = onScreen ? stage_->rect() : adRect();
    // A widget without a size counts as visible if its position is.
    if (ad.isEmpty()) return !parentWidget() || parentWidget()->visibleRegion().contains(pos());
    double visible = 0;
    for (const QRect& part : shownOn.visibleRegion().intersected(ad))
        visible += area(part);
    return visible / area(ad);
}

// Taps.

bool VexmoraWidget::takesTapAt(QPointF point) const {
    return view_ && takesTap(*view_, position().toAd({point.x(), point.y()}));
}

// Presses that the view does not use go to the widget behind.
void VexmoraWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && takesTapAt(event->position()))
        taps_.press({event->globalPosition().x(), event->globalPosition().y()});
    else
        event->ignore();
}

void VexmoraWidget::mouseMoveEvent(QMouseEvent* event) {
    taps_.move({event->globalPosition().x(), event->globalPosition().y()},
               QGuiApplication::styleHints()->startDragDistance());
    const bool takesTap = takesTapAt(event->position());
    if (takesTap == testAttribute(Qt::WA_SetCursor)) return;
    if (takesTap)
        setCursor(Qt::PointingHandCursor);
    else
        unsetCursor();
}

void VexmoraWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && taps_.release()) tap(event->position());
}

void VexmoraWidget::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Select:
        case Qt::Key_Space:
            if (!event->isAutoRepeat()) press();
            break;
        default: QWidget::keyPressEvent(event);
    }
}

void VexmoraWidget::press() {
    tap(QRectF(adRect()).center());
}

// The tap is queued, so that the host may destroy the widget inside its delegate. Until it runs, an
// earlier tap may have disabled the widget or removed the view.
void VexmoraWidget::tap(QPointF position) {
    platform::MainQueue::main()->async([widget = QPointer(this), view = view_, position] {
        if (!widget || !widget->isEnabled() || widget->view_ != view) return;
        if (!widget->takesTapAt(position)) return;
        const auto [x, y] = widget->position().toAd({position.x(), position.y()});
        view->tap({x, y});
    });
}

}  // namespace VexmoraSDK
