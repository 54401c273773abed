#include "VexmoraSDK/quick/ViewItem.h"

#include <QtGui/QPointingDevice>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/quick/VexmoraAdView.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "tests/qt/quick/LocalAds.h"
#include "tests/qt/quick/Scene.h"

using testing::ElementsAre;
using testing::IsEmpty;
using VexmoraSDK::App;
using VexmoraSDK::AppTest;
using VexmoraSDK::LocalAds;
using VexmoraSDK::Scene;
using VexmoraSDK::VexmoraAdView;
using VexmoraSDK::VexmoraBannerView;
using namespace VexmoraSDK::platform;

namespace {

/// Remembers that it was tapped.
class TapLog : public Object {
 public:
    /// Whether it was, since the last call, once the taps that are under way have arrived.
    bool wasTapped() {
        App::runQueuedBlocks();
        return std::exchange(tapped_, false);
    }

 protected:
    Method method(std::string_view selector) const override {
        if (selector != "tapped:") return nullptr;
        return [](Object& self, Object*) { static_cast<TapLog&>(self).tapped_ = true; };
    }

 private:
    bool tapped_ = false;
};

std::shared_ptr<View> plain(Rect frame, Color color) {
    auto view = View::create(frame);
    view->setBackgroundColor(color);
    return view;
}

/// A view of 100 × 60 points, red with a blue lower right corner, in an item at (20, 30).
struct Shown {
    Shown() {
        LocalAds::server();
        view = VexmoraBannerView::create({{0, 0}, {100, 60}});
        view->setBackgroundColor(Color{1, 0, 0, 1});
        view->addSubview(corner);
        view->addGestureRecognizer(
            std::make_shared<TapGestureRecognizer>(std::weak_ptr<Object>(taps), "tapped:"));
        item = new VexmoraAdView;
        scene.add(item);
        item->setPosition({20, 30});
        item->setView(view);
    }

    QColor colorAt(double x, double y) { return scene.colorAt(x, y); }

    const std::shared_ptr<TapLog> taps = std::make_shared<TapLog>();
    const std::shared_ptr<View> corner = plain({{50, 30}, {50, 30}}, {0, 0, 1, 1});
    std::shared_ptr<VexmoraBannerView> view;
    Scene scene;
    VexmoraAdView* item;
};

/// On a screen of that many pixels to the point.
class ViewItemOnScreensTest : public testing::WithParamInterface<int>, public AppTest {
 protected:
    ViewItemOnScreensTest() { shown_.scene.show(QGuiApplication::screens().at(GetParam() - 1)); }

    Shown shown_;
};

INSTANTIATE_TEST_SUITE_P(OfScale, ViewItemOnScreensTest, testing::Values(1, 2, 3),
                         testing::PrintToStringParamName());

TEST_P(ViewItemOnScreensTest, PaintsTheViewSharplyInItsPlace) {
    ASSERT_EQ(shown_.scene.window().devicePixelRatio(), GetParam());
    const double pixel = 1.0 / GetParam();
    EXPECT_EQ(shown_.colorAt(20, 30), Qt::red);
    EXPECT_EQ(shown_.colorAt(20 - pixel, 30), Qt::white);
    EXPECT_EQ(shown_.colorAt(70 - pixel, 60), Qt::red);
    EXPECT_EQ(shown_.colorAt(70, 60), Qt::blue);
    EXPECT_EQ(shown_.colorAt(120 - pixel, 90 - pixel), Qt::blue);
    EXPECT_EQ(shown_.colorAt(120, 90 - pixel), Qt::white);
}

TEST_P(ViewItemOnScreensTest, TurnsAndScalesWithTheScene) {
    shown_.item->setTransformOrigin(QQuickItem::TopLeft);
    shown_.item->setPosition({200, 100});
    shown_.item->setRotation(90);
    shown_.item->setScale(2);
    // Twice as large, the lower right corner at the lower left.
    EXPECT_EQ(shown_.colorAt(196, 104), Qt::red);
    EXPECT_EQ(shown_.colorAt(84, 296), Qt::blue);
    EXPECT_EQ(shown_.colorAt(84, 104), Qt::red);
    EXPECT_EQ(shown_.colorAt(204, 104), Qt::white);
    EXPECT_EQ(shown_.colorAt(76, 104), Qt::white);
}

TEST_P(ViewItemOnScreensTest, IsClippedByItsParents) {
    auto* frame = shown_.scene.add("Item { x: 20; y: 30; width: 60; height: 200; clip: true }");
    shown_.item->setParentItem(frame);
    shown_.item->setPosition({0, 0});
    EXPECT_EQ(shown_.colorAt(78, 32), Qt::red);
    EXPECT_EQ(shown_.colorAt(82, 32), Qt::white);
}

class ViewItemTest : public AppTest {
 protected:
    Shown shown_;
    Scene& scene_ = shown_.scene;
    TapLog& taps_ = *shown_.taps;
};

TEST_F(ViewItemTest, FollowsTheViewAsItChanges) {
    EXPECT_EQ(shown_.item->size(), QSizeF(100, 60));
    EXPECT_EQ(shown_.colorAt(115, 85), Qt::blue);

    shown_.corner->setBackgroundColor(Color{0, 1, 0, 1});
    EXPECT_EQ(shown_.colorAt(115, 85), Qt::green);
    shown_.view->setFrame({{0, 0}, {200, 60}});
    EXPECT_EQ(shown_.item->size(), QSizeF(200, 60));
    EXPECT_EQ(shown_.colorAt(215, 85), Qt::red);
    shown_.view->setHidden(true);
    EXPECT_EQ(shown_.colorAt(115, 85), Qt::white);
}

TEST_F(ViewItemTest, LetsGoOfTheViewThatItShowedBefore) {
    const auto other = VexmoraBannerView::create({{0, 0}, {50, 50}});
    other->setBackgroundColor(Color{0, 1, 0, 1});
    shown_.item->setView(other);
    shown_.view->setFrame({{0, 0}, {300, 60}});
    EXPECT_EQ(shown_.item->size(), QSizeF(50, 50));
    EXPECT_EQ(shown_.colorAt(25, 35), Qt::green);

    shown_.item->setView(nullptr);
    EXPECT_EQ(shown_.item->size(), QSizeF(0, 0));
    EXPECT_EQ(shown_.colorAt(25, 35), Qt::white);

    shown_.item->setView(shown_.view);
    delete shown_.item;
    shown_.view->setFrame({{0, 0}, {100, 100}});
}

TEST_F(ViewItemTest, PaintsAViewLargerThanAnyTexture) {
    shown_.view->setFrame({{0, 0}, {30'000, 60}});
    EXPECT_EQ(shown_.item->size(), QSizeF(30'000, 60));
    EXPECT_EQ(shown_.colorAt(395, 35), Qt::red);
}

TEST_F(ViewItemTest, HandsInClicks) {
    scene_.click({25, 35});
    EXPECT_TRUE(taps_.wasTapped());
    scene_.click({110, 80});
    EXPECT_TRUE(taps_.wasTapped()) << "on a subview";
    scene_.click({130, 80});
    EXPECT_FALSE(taps_.wasTapped()) << "beside it";
    shown_.item->press();
    EXPECT_TRUE(taps_.wasTapped());
}

TEST_F(ViewItemTest, HandsInClicksWhereTheViewIsSeen) {
    shown_.item->setTransformOrigin(QQuickItem::TopLeft);
    shown_.item->setRotation(90);
    shown_.item->setPosition({200, 100});
    scene_.click({145, 195});
    EXPECT_TRUE(taps_.wasTapped());
    scene_.click({205, 105});
    EXPECT_FALSE(taps_.wasTapped());
}

TEST_F(ViewItemTest, TakesADragForNoTap) {
    scene_.press({25, 35});
    scene_.move({100, 35});
    scene_.move({25, 35});
    scene_.release({25, 35});
    EXPECT_FALSE(taps_.wasTapped());

    scene_.press({25, 35});
    scene_.move({26, 36});
    scene_.release({26, 36});
    EXPECT_TRUE(taps_.wasTapped()) << "no hand is that steady";
}

TEST_F(ViewItemTest, LeavesClicksBesideTheViewToWhatIsBehind) {
    auto* behind = scene_.add(
        "MouseArea { anchors.fill: parent; z: -1; property int clicks: 0; "
        "onClicked: clicks += 1; onDoubleClicked: clicks += 10 }");
    shown_.item->setSize({400, 300});
    scene_.click({300, 200});
    EXPECT_EQ(behind->property("clicks"), 1);
    scene_.click({25, 35});
    EXPECT_EQ(behind->property("clicks"), 1);
    QTest::mouseDClick(&scene_.window(), Qt::LeftButton, {}, {25, 35});
    EXPECT_EQ(behind->property("clicks"), 1);
}

TEST_F(ViewItemTest, LetsAListBeFlickedAndTapped) {
    auto* list = scene_.add("Flickable { width: 400; height: 300; contentHeight: 3000 }");
    shown_.item->setParentItem(list->property("contentItem").value<QQuickItem*>());
    const std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
    const auto touch = [&] { return QTest::touchEvent(&scene_.window(), finger.get()); };

    touch().press(0, {50, 80});
    for (int y = 75; y > 35; y -= 5) {
        touch().move(0, {50, y});
        scene_.renderFrame();
    }
    touch().release(0, {50, 35});
    EXPECT_FALSE(taps_.wasTapped());
    EXPECT_GT(list->property("contentY").toDouble(), 0);

    ASSERT_TRUE(App::waitFor([&] { return !list->property("moving").toBool(); }));
    list->setProperty("contentY", 0);
    touch().press(0, {100, 50});
    touch().release(0, {100, 50});
    EXPECT_TRUE(taps_.wasTapped());
}

}  // namespace
