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

namespace VexmoraSDK {

/// Shows a view tree in a scene, its top left at the item's: paints it when it has changed and
/// hands taps in. The implicit size is that of the view. Main thread.
class VEXMORA_EXPORT ViewItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

 public:
    ~ViewItem() override;

    /// A tap in the middle of the view, for those who cannot point. An interstitial ad takes none.
    Q_SLOT void press();

    /// No item asks for more points a side, however large a picture or a text is.
    static constexpr int kMaxImplicitSize = 4096;

 protected:
    explicit ViewItem(QQuickItem* parent);

    /// Called when the item has come into a scene or the view has changed: says what screen readers
    /// are told of it.
    virtual void updateAccessibility() {}

    /// Shows `view` from now on, which is shown nowhere else; absent for none.
    void show(std::shared_ptr<platform::View> view);
    /// The implicit size as long as there is no view or the view has no size.
    void setReservedSize(QSizeF size);

    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseUngrabEvent() override;

 private:
    void viewChanged();
    void updateImplicitSize();
    void tap(QPointF position);

    std::shared_ptr<platform::View> view_;
    QSizeF reservedSize_{0, 0};
    /// The view as it was last painted, and the size at which it is shown.
    QImage picture_;
    QSizeF pictureSize_;
    bool pictureIsNew_ = false;
    TapTracker taps_;
};

}  // namespace VexmoraSDK
