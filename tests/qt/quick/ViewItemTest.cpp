#include "VexmoraSDK/quick/ViewItem.h"

#include <QtGui/QPointingDevice>

#include "VexmoraSDK/quick/VexmoraAdView.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "tests/qt/LocalAds.h"
#include "tests/qt/quick/Scene.h"
#include "tests/unit/platform/Listener.h"

using VexmoraSDK::App;
using VexmoraSDK::AppTest;
using VexmoraSDK::LocalAds;
using VexmoraSDK::Scene;
using VexmoraSDK::VexmoraAdView;
using VexmoraSDK::VexmoraBannerView;
using namespace VexmoraSDK::platform;

namespace {

std::shared_ptr<View> plain(Rect frame, Color color) {
    auto view = View::create(frame);
    view->setBackgroundColor(color);
    return view;
}

/// A view of 100 × 60 points, red with a blue lower right corner, in an item at (20, 30).
class ViewItemTest : public AppTest {
 protected:
    ViewItemTest() {
        LocalAds::server();
        view_ = VexmoraBannerView::create({{0, 0}, {100, 60}});
        view_->setBackgroundColor(Color{1, 0, 0, 1});
        view_->addSubview(corner_);
        view_->addGestureRecognizer(std::make_shared<TapGestureRecognizer>(listener_, "hear:"));
        scene_.add(item_);
        item_->setPosition({20, 30});
        item_->setView(view_);
    }

    QColor colorAt(double x, double y) { return scene_.colorAt(x, y); }

    /// Whether the view was tapped since the last call, once the taps under way have arrived.
    bool wasTapped() {
        App::runQueuedBlocks();
        return std::exchange(tapped_, false);
    }

    const std::shared_ptr<View> corner_ = plain({{50, 30}, {50, 30}}, {0, 0, 1, 1});
    std::shared_ptr<VexmoraBannerView> view_;
    Scene scene_;
    VexmoraAdView* item_ = new VexmoraAdView;

 private:
    bool tapped_ = false;
    std::shared_ptr<Listener> listener_ =
        std::make_shared<Listener>([this](Object*) { tapped_ = true; });
};

TEST_F(ViewItemTest, TurnsAndScalesWithTheSceneAndIsTappedWhereItIsSeen) {
    item_->setTransformOrigin(QQuickItem::TopLeft);
    item_->setPosition({200, 100});
    item_->setRotation(90);
    item_->setScale(2);
    // Twice as large, the lower right corner at the lower left.
    EXPECT_EQ(colorAt(196, 104), Qt::red);
    EXPECT_EQ(colorAt(84, 296), Qt::blue);
    EXPECT_EQ(colorAt(84, 104), Qt::red);
    EXPECT_EQ(colorAt(204, 104), Qt::white);
    EXPECT_EQ(colorAt(76, 104), Qt::white);
    scene_.click({84, 296});
    EXPECT_TRUE(wasTapped());
    scene_.click({204, 104});
    EXPECT_FALSE(wasTapped());
}

TEST_F(ViewItemTest, PaintsAViewLargerThanAnyTexture) {
    view_->setFrame({{0, 0}, {30'000, 60}});
    EXPECT_EQ(item_->size(), QSizeF(30'000, 60));
    EXPECT_EQ(colorAt(395, 35), Qt::red);
}

TEST_F(ViewItemTest, LeavesClicksBesideTheViewToWhatIsBehind) {
    auto* behind = scene_.add(
        "MouseArea { anchors.fill: parent; z: -1; property int clicks: 0; "
        "onClicked: clicks += 1; onDoubleClicked: clicks += 10 }");
    item_->setSize({400, 300});
    scene_.click({300, 200});
    EXPECT_EQ(behind->property("clicks"), 1);
    scene_.click({25, 35});
    EXPECT_EQ(behind->property("clicks"), 1);
    QTest::mouseDClick(&scene_.window(), Qt::LeftButton, {}, {25, 35});
    EXPECT_EQ(behind->property("clicks"), 1);
}

TEST_F(ViewItemTest, LetsAListBeFlickedAndTapped) {
    auto* list = scene_.add("Flickable { width: 400; height: 300; contentHeight: 3000 }");
    item_->setParentItem(list->property("contentItem").value<QQuickItem*>());
    const std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
    const auto touch = [&] { return QTest::touchEvent(&scene_.window(), finger.get()); };

    touch().press(0, {50, 80});
    for (int y = 75; y > 35; y -= 5) {
        touch().move(0, {50, y});
        scene_.renderFrame();
    }
    touch().release(0, {50, 35});
    EXPECT_FALSE(wasTapped());
    EXPECT_GT(list->property("contentY").toDouble(), 0);

    ASSERT_TRUE(App::waitFor([&] { return !list->property("moving").toBool(); }));
    list->setProperty("contentY", 0);
    touch().press(0, {100, 50});
    touch().release(0, {100, 50});
    EXPECT_TRUE(wasTapped());
}

}  // namespace
