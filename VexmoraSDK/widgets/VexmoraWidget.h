#pragma once

#include <QtWidgets/QWidget>
#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/presenting/TapTracker.h"
#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

/// Shows an ad view among widgets, its top left at the widget's: paints it when it has changed and
/// hands taps in. In a layout the widget is as large as its view, in points, and smaller where
/// there is less room; until the ad has come a banner or native view has no size, and a minimum
/// size that the host gives the widget reserves its place. The widget may be destroyed at any time,
/// from inside the operations of the view's delegate too. Main thread.
///
/// An interstitial view belongs on a `VexmoraWidgetScreen`.
class VEXMORA_EXPORT VexmoraWidget : public QWidget {
    Q_OBJECT

 public:
    explicit VexmoraWidget(QWidget* parent = nullptr);
    /// Shows `view`, as the factory has made it: it may be absent.
    explicit VexmoraWidget(std::shared_ptr<VexmoraView> view, QWidget* parent = nullptr);
    ~VexmoraWidget() override;

    /// May be absent.
    const std::shared_ptr<VexmoraView>& view() const { return view_; }
    /// Shows `view` from now on, which no other widget shows; absent for none.
    void setView(std::shared_ptr<VexmoraView> view);

    /// A tap in the middle of the ad, for those who cannot point. An interstitial ad takes none.
    Q_SLOT void press();

    /// No widget asks for more points a side, however large a picture or a text is.
    static constexpr int kMaxSizeHint = 4096;
    QSize sizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

 private:
    void viewChanged();
    void tap(QPointF position);

    std::shared_ptr<VexmoraView> view_;
    TapTracker taps_;
};

}  // namespace VexmoraSDK
