// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QtCore/QPointF>
#include <QtCore/QSizeF>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>
#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/ui/View.h"
#include "VexmoraSDK/presenting/TapTracker.h"
#include "VexmoraSDK/quick/Vexmora.h"

namespace VexmoraSDK {

class AccessibleItem;

/// Shows a view tree in a scene: paints it when it has changed, and passes on taps by touch, mouse,
/// keyboard or screen reader. The implicit size is that of the view. Main thread.
class VEXMORA_EXPORT ViewItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

    /// `Vexmora.FillMode.AsIs`, the default: in its own size at the item's top left, with
    /// `LayoutMirroring` at its top right. `Fit`: scaled to fit the item, centred, proportions
    /// kept; a picture of twice the size is then sharp on a screen of two pixels a point.
    Q_PROPERTY(VexmoraSDK::Vexmora::FillMode fillMode READ fillMode WRITE setFillMode NOTIFY
                   fillModeChanged FINAL)

 public:
    ~ViewItem() override;

    Vexmora::FillMode fillMode() const { return fillMode_; }
    void setFillMode(Vexmora::FillMode mode);

    /// The rectangle of the view, or of the item if there is no view.
    QRectF boundingRect() const override;

    /// The largest implicit size per side in points, however large a picture or a text is.
    static constexpr int kMaxImplicitSize = 4096;

 public Q_SLOTS:
    /// Taps the middle of the view, for keyboard and screen readers. An interstitial ad ignores it.
    void press();

 Q_SIGNALS:
    void fillModeChanged();

 protected:
    explicit ViewItem(QQuickItem* parent);

    /// Updates role and name for screen readers. Called when the item enters a scene and when the
    /// app's language changes.
    virtual void updateAccessibility() {}
    const std::unique_ptr<AccessibleItem> accessible_;

    /// Whether there is a view on show.
    bool isShowing() const { return view_ != nullptr; }
    /// Shows `view`, or nothing if it is null. No other item may show it.
    void show(std::shared_ptr<platform::View> view);
    /// Sets the implicit size for `Fit`, and for `AsIs` while there is no view or it has no size.
    void setReservedSize(QSizeF size);

    bool event(QEvent* event) override;
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

    void hoverMoveEvent(QHoverEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseUngrabEvent() override;

 private:
    void followMirroring();
    Q_SLOT void mirroringChanged();
    void viewChanged();
    void updateImplicitSize();
    void paintPicture();
    AdPosition adPosition() const;
    bool takesTapAt(QPointF position) const;
    void tap(QPointF position);

    std::shared_ptr<platform::View> view_;
    QSizeF reservedSize_{0, 0};
    bool mirrored_ = false;
    Vexmora::FillMode fillMode_ = Vexmora::FillMode::AsIs;
    /// The view as last painted, and its rectangle.
    QImage picture_;
    QRectF pictureRect_;
    bool pictureIsNew_ = false;
    TapTracker taps_;
};

}  // namespace VexmoraSDK
