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

/// Shows a view tree in a scene: paints it when it has changed and hands taps in, of a finger, a
/// mouse, the keyboard or a screen reader. The implicit size is that of the view. Main thread.
class VEXMORA_EXPORT ViewItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

    /// `Vexmora.FillMode.AsIs`, as at first: in its own size, its top left at the item's; with
    /// `LayoutMirroring` its top right. `Fit`: as large as fits into the item with its proportions
    /// kept, in the middle; so a picture of twice the size is sharp on a screen of two pixels a
    /// point.
    Q_PROPERTY(VexmoraSDK::Vexmora::FillMode fillMode READ fillMode WRITE setFillMode NOTIFY
                   fillModeChanged FINAL)

 public:
    ~ViewItem() override;

    Vexmora::FillMode fillMode() const { return fillMode_; }
    void setFillMode(Vexmora::FillMode mode);

    /// Where the view is, or the item itself when there is none.
    QRectF boundingRect() const override;

    /// No item asks for more points a side, however large a picture or a text is.
    static constexpr int kMaxImplicitSize = 4096;

 public Q_SLOTS:
    /// A tap in the middle of the view, for those who cannot point. An interstitial ad takes none.
    void press();

 Q_SIGNALS:
    void fillModeChanged();

 protected:
    explicit ViewItem(QQuickItem* parent);

    /// Called when the item has come into a scene, and when the app speaks another language: tells
    /// screen readers of it.
    virtual void updateAccessibility() {}

    /// Shows `view` from now on, which is shown nowhere else; absent for none.
    void show(std::shared_ptr<platform::View> view);
    /// The implicit size as long as there is no view or the view has no size, and with `Fit`.
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
    /// The view as it was last painted, and where it is shown.
    QImage picture_;
    QRectF pictureRect_;
    bool pictureIsNew_ = false;
    TapTracker taps_;
};

}  // namespace VexmoraSDK
