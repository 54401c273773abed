#pragma once

#include <QtTest/QTest>
#include <QtWidgets/QWidget>
#include <functional>
#include <memory>
#include <utility>

#include "VexmoraSDK/VexmoraSDK.h"
#include "tests/qt/AppTest.h"
#include "tests/qt/quick/LocalAds.h"

namespace VexmoraSDK {

/// A white window of 400 × 300, and a delegate that remembers what it hears.
class WidgetTest : public AppTest {
 protected:
    WidgetTest() {
        LocalAds::server();
        window_->setPalette(Qt::white);
        window_->resize(400, 300);
        window_->show();
        window_->activateWindow();
        EXPECT_TRUE(App::waitFor([&] { return window_->isActiveWindow(); }));

        const auto on = [this](const char* operation) {
            return [this, operation](VexmoraView&) { hear(operation); };
        };
        delegate_->didReceiveAd = on("received");
        delegate_->willLeaveApplication = on("leaves");
        delegate_->willDismissScreen = on("will dismiss");
        delegate_->didDismissScreen = on("did dismiss");
        delegate_->didHaveError = [this](VexmoraView&, const VexmoraError&) { hear("error"); };
    }

    void hear(const char* what) {
        AppTest::hear(what);
        if (whenHeard_) std::exchange(whenHeard_, nullptr)();
    }

    /// The colour that is seen at a point of the window, on a screen of that many pixels to the
    /// point.
    QColor colorAt(double x, double y, int scale = 1) {
        QImage picture(window_->size() * scale, QImage::Format_RGB32);
        picture.setDevicePixelRatio(scale);
        window_->render(&picture);
        return picture.pixelColor(int(x * scale), int(y * scale));
    }

    void click(QPoint point) {
        QTest::mouseClick(window_->windowHandle(), Qt::LeftButton, {}, point);
    }
    void type(Qt::Key key) { QTest::keyClick(window_->windowHandle(), key); }

    std::shared_ptr<VexmoraDelegate> delegate_ = std::make_shared<VexmoraDelegate>();
    /// Run once, inside the operation of the delegate that is called next.
    std::function<void()> whenHeard_;
    std::unique_ptr<QWidget> window_ = std::make_unique<QWidget>();
};

}  // namespace VexmoraSDK
