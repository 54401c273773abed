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
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
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
    return {qCeil(width), qCeil(height)};
}

void VexmoraWidget::paintEvent(QPaintEvent*) {
    if (!view_) return;
    QPainter painter(this);
    platform::paintView(painter, *view_);
}

// Presses beside the view go to what is behind the widget.
void VexmoraWidget::mousePressEvent(QMouseEvent* event) {
    const QPointF position = event->position();
    if (event->button() == Qt::LeftButton && view_ && view_->hitTest({position.x(), position.y()}))
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
    if (!view_ || view_->viewType() == VexmoraViewType::interstitial) return;
    const auto [width, height] = view_->frame().size;
    tap({width / 2, height / 2});
}

// Later, so that a host may destroy the widget from inside of what the tap brings about. By then
// another tap may have had it disabled.
void VexmoraWidget::tap(QPointF position) {
    platform::MainQueue::main()->async([widget = QPointer(this), view = view_, position] {
        if (widget && widget->isEnabled() && view && widget->view_ == view)
            view->tap({position.x(), position.y()});
    });
}

}  // namespace VexmoraSDK
