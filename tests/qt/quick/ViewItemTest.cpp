#include "VexmoraSDK/quick/ViewItem.h"

#include <QtGui/QPointingDevice>

#include "VexmoraSDK/quick/VexmoraAdView.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "tests/qt/quick/LocalAds.h"
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

/// On a screen of that many pixels to the point, painted before on the first screen.
class ViewItemOnScreensTest : public ViewItemTest, public testing::WithParamInterface<int> {
 protected:
    ViewItemOnScreensTest() {
        EXPECT_EQ(colorAt(70, 60), Qt::blue);
        scene_.show(QGuiApplication::screens().at(GetParam() - 1));
    }
};

INSTANTIATE_TEST_SUITE_P(OfScale, ViewItemOnScreensTest, testing::Values(1, 2, 3),
                         testing::PrintToStringParamName());

TEST_P(ViewItemOnScreensTest, PaintsTheViewSharplyInItsPlace) {
    ASSERT_EQ(scene_.window().devicePixelRatio(), GetParam());
    const double pixel = 1.0 / GetParam();
    EXPECT_EQ(colorAt(20, 30), Qt::red);
    EXPECT_EQ(colorAt(20 - pixel, 30), Qt::white);
    EXPECT_EQ(colorAt(70 - pixel, 60), Qt::red);
    EXPECT_EQ(colorAt(70, 60), Qt::blue);
    EXPECT_EQ(colorAt(120 - pixel, 90 - pixel), Qt::blue);
    EXPECT_EQ(colorAt(120, 90 - pixel), Qt::white);
}

TEST_P(ViewItemOnScreensTest, TurnsAndScalesWithTheScene) {
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
}

TEST_P(ViewItemOnScreensTest, IsClippedByItsParents) {
    auto* frame = scene_.add("Item { x: 20; y: 30; width: 60; height: 200; clip: true }");
    item_->setParentItem(frame);
    item_->setPosition({0, 0});
    EXPECT_EQ(colorAt(78, 32), Qt::red);
    EXPECT_EQ(colorAt(82, 32), Qt::white);
}

TEST_F(ViewItemTest, FollowsTheViewAsItChanges) {
    EXPECT_EQ(item_->size(), QSizeF(100, 60));
    EXPECT_EQ(colorAt(115, 85), Qt::blue);

    corner_->setBackgroundColor(Color{0, 1, 0, 1});
    EXPECT_EQ(colorAt(115, 85), Qt::green);
    view_->setFrame({{0, 0}, {200, 60}});
    EXPECT_EQ(item_->size(), QSizeF(200, 60));
    EXPECT_EQ(colorAt(215, 85), Qt::red);
    view_->setHidden(true);
    EXPECT_EQ(colorAt(115, 85), Qt::white);
}

TEST_F(ViewItemTest, LetsGoOfTheViewThatItShowedBefore) {
    const auto other = VexmoraBannerView::create({{0, 0}, {50, 50}});
    other->setBackgroundColor(Color{0, 1, 0, 1});
    item_->setView(other);
    view_->setFrame({{0, 0}, {300, 60}});
    EXPECT_EQ(item_->size(), QSizeF(50, 50));
    EXPECT_EQ(colorAt(25, 35), Qt::green);

    item_->setView(nullptr);
    EXPECT_EQ(item_->size(), QSizeF(0, 0));
    EXPECT_EQ(colorAt(25, 35), Qt::white);

    item_->setView(view_);
    delete item_;
    view_->setFrame({{0, 0}, {100, 100}});
    other->setFrame({{0, 0}, {100, 100}});
}

TEST_F(ViewItemTest, PaintsAViewLargerThanAnyTexture) {
    view_->setFrame({{0, 0}, {30'000, 60}});
    EXPECT_EQ(item_->size(), QSizeF(30'000, 60));
    EXPECT_EQ(colorAt(395, 35), Qt::red);
}

TEST_F(ViewItemTest, HandsInClicks) {
    scene_.click({25, 35});
    EXPECT_TRUE(wasTapped());
    scene_.click({110, 80});
    EXPECT_TRUE(wasTapped()) << "on a subview";
    scene_.click({130, 80});
    EXPECT_FALSE(wasTapped()) << "beside it";
    item_->press();
    EXPECT_TRUE(wasTapped());
}

TEST_F(ViewItemTest, HandsInClicksWhereATurnedViewIsSeen) {
    item_->setTransformOrigin(QQuickItem::TopLeft);
    item_->setRotation(90);
    item_->setPosition({200, 100});
    scene_.click({145, 195});
    EXPECT_TRUE(wasTapped());
    scene_.click({205, 105});
    EXPECT_FALSE(wasTapped());
}

TEST_F(ViewItemTest, TakesADragForNoTap) {
    scene_.press({25, 35});
    scene_.move({100, 35});
    scene_.move({25, 35});
    scene_.release({25, 35});
    EXPECT_FALSE(wasTapped());

    scene_.press({25, 35});
    scene_.move({26, 36});
    scene_.release({26, 36});
    EXPECT_TRUE(wasTapped()) << "no hand is that steady";
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
