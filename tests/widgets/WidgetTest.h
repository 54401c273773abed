#pragma once

#include <gmock/gmock.h>

#include <QtTest/QTest>
#include <QtWidgets/QWidget>
#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "VexmoraSDK/VexmoraSDK.h"
#include "tests/qt/AppTest.h"
#include "tests/qt/quick/LocalAds.h"

namespace VexmoraSDK {

/// A white window of 400 × 300, and a delegate that remembers what it hears.
class WidgetTest : public testing::Test {
 protected:
    WidgetTest() {
        LocalAds::server();
        window_->setPalette(Qt::white);
        window_->resize(400, 300);
        window_->show();
        window_->activateWindow();
        EXPECT_TRUE(App::waitFor([&] { return window_->isActiveWindow(); }));

        delegate_->didReceiveAd = [this](VexmoraView&) { hear("received"); };
        delegate_->willLeaveApplication = [this](VexmoraView&) { hear("leaves"); };
        delegate_->willDismissScreen = [this](VexmoraView&) { hear("will dismiss"); };
        delegate_->didDismissScreen = [this](VexmoraView&) { hear("did dismiss"); };
        delegate_->didHaveError = [this](VexmoraView&, const VexmoraError&) { hear("error"); };
    }

    void hear(const char* what) {
        heard_.emplace_back(what);
        if (whenHeard_) std::exchange(whenHeard_, nullptr)();
    }

    bool waitToHear(const std::string& what) {
        return App::waitFor([&] { return std::ranges::find(heard_, what) != heard_.end(); });
    }

    std::vector<std::string> heard() { return std::exchange(heard_, {}); }

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

 private:
    std::vector<std::string> heard_;
};

}  // namespace VexmoraSDK
