// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/VexmoraAdItem.h"

#include <QtCore/QPointer>
#include <QtCore/QThread>
#include <QtGui/QAccessible>
#include <QtGui/QPointingDevice>
#include <QtQuick/QSGImageNode>

#include "VexmoraSDK/quick/VexmoraScreenItem.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "VexmoraSDK/views/VexmoraViewFactory.h"
#include "tests/LocalAds.h"
#include "tests/RecordingOpener.h"
#include "tests/qt/quick/Scene.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using VexmoraSDK::AdServer;
using VexmoraSDK::App;
using VexmoraSDK::AppTest;
using VexmoraSDK::LocalAds;
using VexmoraSDK::RecordingOpener;
using VexmoraSDK::Scene;
using VexmoraSDK::VexmoraAdItem;
using VexmoraSDK::VexmoraDelegate;
using VexmoraSDK::VexmoraView;
using VexmoraSDK::VexmoraViewFactory;
using VexmoraSDK::platform::Color;
using VexmoraSDK::platform::View;

namespace {

class VexmoraAdItemTest : public AppTest {
 protected:
    VexmoraAdItem* add(const QByteArray& properties) {
        auto* ad = scene_.add<VexmoraAdItem>("VexmoraAdView {" + properties + "}");
        listenTo(ad);
        return ad;
    }

    /// Adds an ad and waits until it is drawn. No other event may come.
    VexmoraAdItem* addDrawn() {
        heard();
        auto* ad = add("containerId: 'home'; adSize: '320x60'");
        EXPECT_TRUE(waitToHear("received"));
        EXPECT_THAT(heard(), ElementsAre("received"));
        return ad;
    }

    void listenTo(VexmoraAdItem* ad) {
        const auto on = [ad](auto signal, auto listener) {
            QObject::connect(ad, signal, ad, listener, Qt::DirectConnection);
        };
        const auto hear = [this](const std::string& what) {
            EXPECT_EQ(QThread::currentThread(), qGuiApp->thread());
            AppTest::hear(what);
        };
        on(&VexmoraAdItem::didReceiveAd, [=] { hear("received"); });
        on(&VexmoraAdItem::willLeaveApplication,
           [=](const QString& url) { hear("leaves for " + url.toStdString()); });
        on(&VexmoraAdItem::didHaveError, [=](int code, const QString& description) {
            EXPECT_FALSE(description.isEmpty());
            hear("error " + std::to_string(code));
        });
    }

    /// Whether an event came since the last call. Delivers pending taps first.
    bool wasTapped() {
        App::runQueuedBlocks();
        return !heard().empty();
    }

    /// Waits for `count` requests since the test began whose targets begin with `start`, and
    /// returns them.
    std::vector<std::string> requests(const std::string& start, std::size_t count) {
        std::vector<std::string> targets;
        EXPECT_TRUE(App::waitFor([&] {
            targets.clear();
            const auto all = server_.requests();
            for (auto request = all.begin() + before_; request != all.end(); ++request) {
                if (request->target.starts_with(start)) targets.push_back(request->target);
            }
            return targets.size() >= count;
        })) << start;
        return targets;
    }

    AdServer& server_ = LocalAds::server();
    const std::ptrdiff_t before_ = std::ssize(server_.requests());
    RecordingOpener opener_;
    Scene scene_;
};

TEST_F(VexmoraAdItemTest, ReservesTheRequestedSizeAndTakesThatOfTheAd) {
    const auto* banner = add("containerId: 'small'; adSize: '468x60'; y: 200");
    EXPECT_EQ(banner->size(), QSizeF(468, 60));
    ASSERT_TRUE(waitToHear("received"));
    EXPECT_EQ(banner->size(), QSizeF(300, 50));

    heard();
    const auto* native = add("containerId: 'home'; viewType: Vexmora.ViewType.Native");
    EXPECT_EQ(native->size(), QSizeF(0, 0));
    ASSERT_TRUE(waitToHear("received"));
    EXPECT_GE(native->width(), 132 + 10) << "the picture and a text beside it";
    EXPECT_GE(native->height(), 99);
    EXPECT_EQ(scene_.colorAt(10, 50), Qt::red);
    EXPECT_EQ(scene_.colorAt(125, 50), Qt::blue);
}

TEST_F(VexmoraAdItemTest, AsksForTheFirstOfSizeAdTypeAndViewType) {
    add("containerId: 'some'; adSize: '320x100'; adType: 77; viewType: 3");
    add("containerId: 'some'; adType: Vexmora.AdType.FullBanner; viewType: 3");
    add("containerId: 'some'; viewType: Vexmora.ViewType.Banner");
    const std::string some = "/ads?container=some&types=";
    EXPECT_THAT(requests(some, 3),
                UnorderedElementsAre(some + "83", some + "84", some + "77,83,84"));
}

TEST_F(VexmoraAdItemTest, AsksOnceForAllChangesOfATurn) {
    auto* ad = addDrawn();
    ad->setContainerId(QStringLiteral("elsewhere"));
    ad->setAdType(83);
    ad->setAdSize({});
    EXPECT_EQ(ad->size(), QSizeF(320, 100)) << "of the ad type";
    EXPECT_EQ(scene_.colorAt(10, 30), Qt::white);

    ASSERT_TRUE(waitToHear("received"));
    EXPECT_EQ(ad->size(), QSizeF(320, 100));
    ad->setAdType(83);
    addDrawn();
    EXPECT_THAT(requests("/ads?container=elsewhere&", 1),
                ElementsAre("/ads?container=elsewhere&types=83"))
        << "the same again is no change";
}

TEST_F(VexmoraAdItemTest, ShowsAViewOfTheHostUntilItsPropertiesChange) {
    scene_.add("Item {}");  // imports QtQuick, without which there are no accessible items
    auto* ad = new VexmoraAdItem(scene_.window().contentItem());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(ad)->role(), QAccessible::Link);
    scene_.add(ad);
    listenTo(ad);
    bool hostHeard = false;
    auto delegate = std::make_shared<VexmoraDelegate>();
    delegate->didReceiveAd = [&](VexmoraView&) { hostHeard = true; };
    auto view = VexmoraViewFactory::createView("home", "320x60", delegate);
    ad->setContainerId(QStringLiteral("unasked"));
    ad->setView(view);
    EXPECT_EQ(ad->view(), view);

    ASSERT_TRUE(App::waitFor([&] { return hostHeard; }));
    EXPECT_EQ(ad->size(), QSizeF(320, 60));
    EXPECT_EQ(scene_.colorAt(10, 30), Qt::red);
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_THAT(requests("/ads?container=unasked&", 0), IsEmpty());

    ad->setAdSize(QStringLiteral("320x100"));
    ASSERT_TRUE(waitToHear("received"));
    EXPECT_NE(ad->view(), view);
    EXPECT_EQ(ad->size(), QSizeF(320, 100));
}

TEST_F(VexmoraAdItemTest, IsTappedWhereItIsSeenUnderRotationAndScale) {
    auto* ad = addDrawn();
    ad->setTransformOrigin(QQuickItem::TopLeft);
    ad->setPosition({200, 100});
    ad->setRotation(90);
    ad->setScale(0.5);
    // The ad is 30 points wide, at the left of its place, and 160 high.
    EXPECT_EQ(scene_.colorAt(196, 104), Qt::red);
    EXPECT_EQ(scene_.colorAt(174, 256), Qt::blue);
    EXPECT_EQ(scene_.colorAt(204, 104), Qt::white);
    EXPECT_EQ(scene_.colorAt(166, 104), Qt::white);
    scene_.click({204, 104});
    EXPECT_FALSE(wasTapped());
    scene_.click({174, 256});
    EXPECT_TRUE(wasTapped());
}

TEST_F(VexmoraAdItemTest, PaintsAViewLargerThanAnyTextureWithFewerPixels) {
    struct Item : VexmoraAdItem {
        using VexmoraAdItem::updatePaintNode;
    } ad;
    scene_.add(&ad);
    const auto view = VexmoraSDK::VexmoraBannerView::create({{0, 0}, {30'000, 60}});
    view->setBackgroundColor(Color{1, 0, 0, 1});
    const auto end = View::create({{29'000, 0}, {1000, 60}});
    end->setBackgroundColor(Color{0, 0, 1, 1});
    view->addSubview(end);
    ad.setView(view);
    EXPECT_EQ(scene_.colorAt(395, 35), Qt::red);
    ad.setX(-28'800);
    EXPECT_EQ(scene_.colorAt(150, 35), Qt::red);
    EXPECT_EQ(scene_.colorAt(250, 35), Qt::blue);
    const std::unique_ptr<QSGNode> node(ad.updatePaintNode(nullptr, nullptr));
    const QSize pixels = static_cast<QSGImageNode*>(node.get())->texture()->textureSize();
    EXPECT_LE(pixels.width(), 4096);
}

TEST_F(VexmoraAdItemTest, LeavesClicksBesideTheAdToItemsBehind) {
    auto* behind = scene_.add(
        "MouseArea { anchors.fill: parent; z: -1; property int clicks: 0; "
        "onClicked: clicks += 1; onDoubleClicked: clicks += 10 }");
    addDrawn()->setSize({400, 300});
    scene_.click({300, 200});
    EXPECT_EQ(behind->property("clicks"), 1);
    scene_.click({25, 35});
    QTest::mouseDClick(&scene_.window(), Qt::LeftButton, {}, {25, 35});
    EXPECT_EQ(behind->property("clicks"), 1);
}

TEST_F(VexmoraAdItemTest, LetsAListBeFlickedAndTapped) {
    auto* list = scene_.add("Flickable { width: 400; height: 300; contentHeight: 3000 }");
    addDrawn()->setParentItem(list->property("contentItem").value<QQuickItem*>());
    const std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
    const auto touch = [&] { return QTest::touchEvent(&scene_.window(), finger.get()); };

    touch().press(0, {50, 50});
    for (int y = 45; y > 5; y -= 5) {
        touch().move(0, {50, y});
        scene_.renderFrame();
    }
    touch().release(0, {50, 5});
    EXPECT_FALSE(wasTapped());
    EXPECT_GT(list->property("contentY").toDouble(), 0);

    ASSERT_TRUE(App::waitFor([&] { return !list->property("moving").toBool(); }));
    list->setProperty("contentY", 0);
    touch().press(0, {100, 50});
    touch().release(0, {100, 50});
    EXPECT_TRUE(wasTapped());
}

}  // namespace
