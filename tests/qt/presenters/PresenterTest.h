// SPDX-License-Identifier: MIT
#pragma once

#include <QtTest/QTest>
#include <memory>

#include "VexmoraSDK/VexmoraSDK.h"
#include "tests/AppTest.h"
#include "tests/LocalAds.h"
#include "tests/qt/presenters/Presenters.h"

namespace VexmoraSDK {

/// A host with presenters of each kind, and a delegate that records its calls.
class PresenterTest : public AppTest,
                      public testing::WithParamInterface<std::unique_ptr<Presenters> (*)()> {
 protected:
    PresenterTest() {
        const auto on = [this](const char* operation) {
            return [events = events_, operation](VexmoraView&) { events->add(operation); };
        };
        delegate_->didReceiveAd = on("received");
        delegate_->willLeaveApplication = on("leaves");
        delegate_->willDismissScreen = on("will dismiss");
        delegate_->didDismissScreen = on("did dismiss");
        delegate_->didHaveError = [events = events_](VexmoraView&, const VexmoraError&) {
            events->add("error");
        };
    }

    std::shared_ptr<VexmoraView> createView(const std::string& container, const char* size) const {
        return VexmoraViewFactory::createView(container, size, delegate_);
    }

    QColor colorAt(double x, double y) { return app_->colorAt(x, y); }
    void press(QPoint point) { QTest::mousePress(app_->window(), Qt::LeftButton, {}, point); }
    void move(QPoint point) { QTest::mouseMove(app_->window(), point); }
    void release(QPoint point) { QTest::mouseRelease(app_->window(), Qt::LeftButton, {}, point); }
    void click(QPoint point, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(app_->window(), button, {}, point);
    }
    /// Moves the mouse, whether or not the display has one.
    bool waitForCursor(QPoint point, Qt::CursorShape shape) {
        const QPoint there = app_->window()->mapToGlobal(point);
        QMouseEvent hover(QEvent::MouseMove, point, there, Qt::NoButton, {}, {});
        QCoreApplication::sendEvent(app_->window(), &hover);
        move(point);
        return App::waitFor([&] { return app_->cursorAt(point) == shape; });
    }
    void type(Qt::Key key) { QTest::keyClick(app_->window(), key); }

    /// Clicks without running anything else on the main thread.
    void clickAtOnce(QPointF point) {
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
            qt_handleMouseEvent(app_->window(), point, app_->window()->mapToGlobal(point), held,
                                Qt::LeftButton, type, {}, QTest::lastMouseTimestamp);
        }
        QTest::lastMouseTimestamp += QTest::mouseDoubleClickInterval;
    }

    AdServer& server_ = LocalAds::server();
    const std::shared_ptr<VexmoraDelegate> delegate_ = std::make_shared<VexmoraDelegate>();
    std::unique_ptr<Presenters> app_ = GetParam()();
};

inline const auto kToolkits = testing::Values(&Presenters::ofQuick, &Presenters::ofWidgets);

inline std::string nameOf(const testing::TestParamInfo<PresenterTest::ParamType>& toolkit) {
    return toolkit.index == 0 ? "Quick" : "Widgets";
}

}  // namespace VexmoraSDK
