#pragma once

#include <QtTest/QTest>
#include <functional>
#include <memory>
#include <utility>

#include "VexmoraSDK/VexmoraSDK.h"
#include "tests/qt/AppTest.h"
#include "tests/qt/LocalAds.h"
#include "tests/qt/presenters/Presenters.h"

namespace VexmoraSDK {

/// A host with presenters of each kind, and a delegate that remembers what it hears.
class PresenterTest : public AppTest,
                      public testing::WithParamInterface<std::unique_ptr<Presenters> (*)()> {
 protected:
    PresenterTest() {
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
    void type(Qt::Key key) { QTest::keyClick(app_->window(), key); }

    AdServer& server_ = LocalAds::server();
    const std::shared_ptr<VexmoraDelegate> delegate_ = std::make_shared<VexmoraDelegate>();
    /// Run once, inside the operation of the delegate that is called next.
    std::function<void()> whenHeard_;
    std::unique_ptr<Presenters> app_ = GetParam()();
};

inline const auto kToolkits = testing::Values(&Presenters::ofQuick, &Presenters::ofWidgets);

inline std::string nameOf(const testing::TestParamInfo<PresenterTest::ParamType>& toolkit) {
    return toolkit.index == 0 ? "Quick" : "Widgets";
}

}  // namespace VexmoraSDK
