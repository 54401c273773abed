#include "VexmoraSDK/widgets/VexmoraWidget.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QStyleHints>
#include <QtWidgets/QAccessibleWidget>
#include <utility>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/qt/ViewPainter.h"
#include "VexmoraSDK/presenting/TapTarget.h"

namespace VexmoraSDK {
namespace {

/// An ad is a link to screen readers.
class AccessibleAd : public QAccessibleWidget {
 public:
    explicit AccessibleAd(VexmoraWidget* ad)
        : QAccessibleWidget(ad, QAccessible::Link, VexmoraWidget::tr("Advertisement")) {}

    QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString& name) override {
        if (name == pressAction()) static_cast<VexmoraWidget*>(widget())->press();
    }
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* const ad = qobject_cast<VexmoraWidget*>(object);
    return ad ? new AccessibleAd(ad) : nullptr;
}

}  // namespace

VexmoraWidget::VexmoraWidget(QWidget* parent) : QWidget(parent) {
    [[maybe_unused]] static const bool accessible =
        (QAccessible::installFactory(makeAccessible), true);
    // No larger than the ad, and smaller where there is no room: a server cannot size the window.
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
}

VexmoraWidget::VexmoraWidget(std::shared_ptr<VexmoraView> view, QWidget* parent)
    : VexmoraWidget(parent) {
    setView(std::move(view));
}

VexmoraWidget::~VexmoraWidget() {
    if (view_) view_->setDisplayCallback({});
}

void VexmoraWidget::setView(std::shared_ptr<VexmoraView> view) {
    if (view_) view_->setDisplayCallback({});
    view_ = std::move(view);
    if (view_) view_->setDisplayCallback([this] { viewChanged(); });
    viewChanged();
}

void VexmoraWidget::viewChanged() {
    updateGeometry();
    update();
}

QSize VexmoraWidget::sizeHint() const {
    if (!view_) return {0, 0};
    const auto [width, height] = view_->frame().size;
    return QSize(qCeil(width), qCeil(height)).boundedTo({kMaxSizeHint, kMaxSizeHint});
}

void VexmoraWidget::paintEvent(QPaintEvent*) {
    if (!view_) return;
    QPainter painter(this);
    platform::paintView(painter, *view_);
}

// Presses that the view has no use for go to what is behind the widget.
void VexmoraWidget::mousePressEvent(QMouseEvent* event) {
    const QPointF position = event->position();
    if (event->button() == Qt::LeftButton && view_ &&
        takesTap(*view_, {position.x(), position.y()}))
        taps_.press({event->globalPosition().x(), event->globalPosition().y()});
    else
        event->ignore();
}

void VexmoraWidget::mouseMoveEvent(QMouseEvent* event) {
    taps_.move({event->globalPosition().x(), event->globalPosition().y()},
               QGuiApplication::styleHints()->startDragDistance());
}

void VexmoraWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && taps_.release()) tap(event->position());
}

void VexmoraWidget::press() {
    if (!view_) return;
    const auto [width, height] = view_->frame().size;
    tap({width / 2, height / 2});
}

// The tap is handed in later, so that a host may destroy the widget while it hears of it. Until
// then an earlier tap may have disabled the widget or taken the view away.
void VexmoraWidget::tap(QPointF position) {
    platform::MainQueue::main()->async([widget = QPointer(this), view = view_, position] {
        if (!widget || !widget->isEnabled() || !view || widget->view_ != view) return;
        const platform::Point point{position.x(), position.y()};
        if (takesTap(*view, point)) view->tap(point);
    });
}

}  // namespace VexmoraSDK
