#include "VexmoraSDK/quick/VexmoraScreen.h"

#include <QtCore/QPointer>
#include <QtGui/QAccessible>

#include "tests/qt/quick/LocalAds.h"
#include "tests/qt/quick/Scene.h"

using testing::ElementsAre;
using testing::IsEmpty;
using VexmoraSDK::App;
using VexmoraSDK::AppTest;
using VexmoraSDK::LocalAds;
using VexmoraSDK::Scene;
using VexmoraSDK::VexmoraAdView;
using VexmoraSDK::VexmoraScreen;

namespace {

/// A window of 400 × 300 with a screen that fills it, and a button behind.
class VexmoraScreenTest : public AppTest {
 protected:
    VexmoraScreenTest() {
        LocalAds::server();
        behind_ = scene_.add(
            "MouseArea { width: 400; height: 300; focus: true; "
            "property int clicks: 0; onClicked: ++clicks }");
        screen_ = scene_.add<VexmoraScreen>("VexmoraScreen { width: 400; height: 300 }");
        ad_ = scene_.add<VexmoraAdView>("VexmoraAdView { containerId: 'home'; adType: 14 }");
        QObject::connect(ad_, &VexmoraAdView::didReceiveAd, ad_, [this] { hear("received"); });
        QObject::connect(ad_, &VexmoraAdView::willDismissScreen, ad_, [this] { hear("will"); });
        QObject::connect(ad_, &VexmoraAdView::didDismissScreen, ad_, [this] { hear("did"); });
        EXPECT_TRUE(waitToHear("received"));
        heard();
    }

    /// Presents the ad and waits until it has moved in.
    void present() {
        EXPECT_TRUE(screen_->present(ad_.data()));
        // The picture's top, 250 points high in the 300 of the window.
        EXPECT_TRUE(App::waitFor([&] { return scene_.colorAt(60, 26) == Qt::red; }));
    }

    static constexpr QPoint kClose{400 - 12 - 18, 12 + 18};

    Scene scene_;
    QPointer<QQuickItem> behind_;
    QPointer<VexmoraScreen> screen_;
    QPointer<VexmoraAdView> ad_;
};

TEST_F(VexmoraScreenTest, PresentsTheAdInItsMiddleAndTakesItAwayWhenItIsClosed) {
    EXPECT_EQ(ad_->size(), QSizeF(0, 0));
    EXPECT_EQ(scene_.colorAt(60, 150), Qt::white);
    EXPECT_FALSE(screen_->present(static_cast<VexmoraAdView*>(nullptr)));
    present();
    EXPECT_TRUE(screen_->isPresenting());
    EXPECT_FALSE(screen_->present(ad_.data()));
    EXPECT_EQ(scene_.colorAt(340, 150), Qt::blue);

    scene_.click(kClose);
    ASSERT_TRUE(waitToHear("did"));
    EXPECT_THAT(heard(), ElementsAre("will", "did"));
    EXPECT_FALSE(screen_->isPresenting());
    EXPECT_EQ(scene_.colorAt(60, 150), Qt::white);
    scene_.click({200, 150});
    EXPECT_EQ(behind_->property("clicks"), 1);

    present();
    EXPECT_TRUE(screen_->isPresenting());
}

TEST_F(VexmoraScreenTest, ClosesOnceByEscapeHoweverOftenItIsPressed) {
    behind_->forceActiveFocus();
    present();
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(&scene_.window(), Qt::Key_Escape);
    ASSERT_TRUE(waitToHear("will"));
    QTest::keyClick(&scene_.window(), Qt::Key_Escape);
    scene_.click(kClose);
    ASSERT_TRUE(waitToHear("did"));
    EXPECT_THAT(heard(), ElementsAre("will", "did"));
    EXPECT_TRUE(behind_->hasActiveFocus());
    EXPECT_EQ(behind_->property("clicks"), 0);
}

TEST_F(VexmoraScreenTest, KeepsTheCloseButtonClearOfANotchAndTellsScreenReadersOfIt) {
    screen_->setTopInset(40);
    screen_->setRightInset(10);
    present();
    const QRectF close = screen_->closeRect();
    EXPECT_EQ(close, QRectF(400 - 10 - 12 - 36, 40 + 12, 36, 36));

    auto* button = screen_->childItems().last();
    auto* accessible = QAccessible::queryAccessibleInterface(button);
    ASSERT_TRUE(accessible);
    EXPECT_EQ(accessible->role(), QAccessible::Button);
    EXPECT_EQ(accessible->text(QAccessible::Name), QLatin1String("Close advertisement"));
    accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(waitToHear("did"));
}

TEST_F(VexmoraScreenTest, FinishesTheDismissalWhenItIsDestroyedMeanwhile) {
    present();
    scene_.click(kClose);
    ASSERT_TRUE(waitToHear("will"));
    delete screen_.data();
    ASSERT_TRUE(waitToHear("did"));
    EXPECT_THAT(heard(), ElementsAre("will", "did"));
}

TEST_F(VexmoraScreenTest, MayBeDestroyedFromInsideOfTheSignalsOfItsAd) {
    QObject::connect(ad_, &VexmoraAdView::didDismissScreen, screen_, [this] {
        delete screen_.data();
        delete ad_.data();
    });
    present();
    scene_.click(kClose);
    ASSERT_TRUE(waitToHear("did"));
    EXPECT_FALSE(screen_);
}

TEST_F(VexmoraScreenTest, ClosesAnAdWhoseItemIsGone) {
    present();
    delete ad_.data();
    scene_.click(kClose);
    ASSERT_TRUE(App::waitFor([&] { return !screen_->isPresenting(); }));
    EXPECT_THAT(heard(), IsEmpty());
}

using VexmoraScreenDeathTest = VexmoraScreenTest;

TEST_F(VexmoraScreenDeathTest, StopsAtATapOnThePicture) {
    EXPECT_DEATH(
        {
            present();
            scene_.click({200, 150});
            waitToHear("never");
        },
        "fatal error: unrecognized selector 'handleTap:' sent to instance of "
        "'VexmoraSDK.VexmoraInterstitialView'");
}

}  // namespace
