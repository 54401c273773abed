#include "VexmoraSDK/widgets/VexmoraWidgetScreen.h"

#include <QtGui/QAccessible>
#include <QtGui/QShortcut>
#include <QtWidgets/QApplication>

#include "VexmoraSDK/platform/Window.h"
#include "tests/widgets/WidgetTest.h"

using testing::ElementsAre;
using VexmoraSDK::App;
using VexmoraSDK::VexmoraView;
using VexmoraSDK::VexmoraViewFactory;
using VexmoraSDK::VexmoraWidget;
using VexmoraSDK::VexmoraWidgetScreen;
using VexmoraSDK::WidgetTest;

namespace {

/// A window that is one button, and an interstitial ad to be presented over it.
class VexmoraWidgetScreenTest : public WidgetTest {
 protected:
    VexmoraWidgetScreenTest() {
        behind_->resize(400, 300);
        behind_->show();
        behind_->setFocus();
        QObject::connect(behind_, &QPushButton::clicked, behind_, [this] { ++clicksBehind_; });
        ad_ = VexmoraViewFactory::createView("home", "300x250", delegate_);
        ad_->setFrame(screen_->viewFrame());
        EXPECT_TRUE(waitToHear("received"));
        heard();
    }

    /// Presents the ad and waits until it has moved in.
    void present() {
        EXPECT_TRUE(screen_->present(ad_));
        EXPECT_TRUE(App::waitFor([&] { return colorAt(60, 30) == Qt::red; }));
        EXPECT_EQ(colorAt(340, 270), Qt::blue);
    }

    static constexpr QPoint kClose{400 - 12 - 18, 12 + 18};

    QPushButton* const behind_ = new QPushButton(window_.get());
    int clicksBehind_ = 0;
    QPointer<VexmoraWidgetScreen> screen_ = new VexmoraWidgetScreen(behind_);
    std::shared_ptr<VexmoraView> ad_;
};

TEST_F(VexmoraWidgetScreenTest, PresentsTheAdInItsMiddleAndTakesItAwayWhenItIsClosed) {
    EXPECT_FALSE(screen_->present(nullptr));
    EXPECT_FALSE(screen_->present(VexmoraViewFactory::createView("home", "320x60", nullptr)));
    EXPECT_FALSE(screen_->isVisible());
    present();
    EXPECT_TRUE(screen_->isPresenting());
    EXPECT_FALSE(screen_->present(ad_));

    click(kClose);
    ASSERT_TRUE(waitToHear("did dismiss"));
    EXPECT_THAT(heard(), ElementsAre("will dismiss", "did dismiss"));
    EXPECT_FALSE(screen_->isPresenting());
    EXPECT_FALSE(screen_->isVisible());
    click(kClose);
    EXPECT_EQ(clicksBehind_, 1);
    present();
}

TEST_F(VexmoraWidgetScreenTest, ClosesOnceHoweverOftenItIsToldTo) {
    bool shortcut = false;
    QShortcut hosts(Qt::Key_Escape, window_.get());
    QObject::connect(&hosts, &QShortcut::activated, [&] { shortcut = true; });
    present();
    // Two taps at once, before anything comes of the first.
    auto* const ad = screen_->findChild<VexmoraWidget*>();
    QTest::mouseClick(ad, Qt::LeftButton, {}, kClose);
    QTest::mouseClick(ad, Qt::LeftButton, {}, kClose);
    screen_->close();
    for (int i = 0; i < 2; ++i) {
        click(kClose);
        for (const auto key : {Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Space})
            type(key);
    }
    ASSERT_TRUE(waitToHear("did dismiss"));
    EXPECT_THAT(heard(), ElementsAre("will dismiss", "did dismiss"));
    EXPECT_FALSE(shortcut);
    EXPECT_EQ(clicksBehind_, 0);
    EXPECT_TRUE(behind_->hasFocus());
    type(Qt::Key_Escape);
    EXPECT_TRUE(shortcut);
}

TEST_F(VexmoraWidgetScreenTest, GivesTheKeyboardAndScreenReadersACloseButtonThatStaysInSight) {
    screen_->setContentsMargins(0, 40, 10, 0);
    present();
    behind_->resize(350, 280);
    EXPECT_EQ(screen_->size(), QSize(350, 280));

    type(Qt::Key_Tab);
    type(Qt::Key_Tab);
    auto* const button = QAccessible::queryAccessibleInterface(QApplication::focusWidget());
    ASSERT_TRUE(button);
    EXPECT_EQ(button->role(), QAccessible::Button);
    EXPECT_EQ(button->text(QAccessible::Name), QLatin1String("Close advertisement"));
    const QRect seen(window_->mapToGlobal(QPoint(350 - 10 - 12 - 36, 40 + 12)), QSize(36, 36));
    EXPECT_TRUE(App::waitFor([&] { return button->rect() == seen; }));

    auto* const ad = QAccessible::queryAccessibleInterface(screen_->findChild<VexmoraWidget*>());
    ad->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    type(Qt::Key_Return);
    ASSERT_TRUE(waitToHear("did dismiss"));
    EXPECT_THAT(heard(), ElementsAre("will dismiss", "did dismiss"));
    EXPECT_TRUE(behind_->hasFocus());
}

TEST_F(VexmoraWidgetScreenTest, FinishesTheDismissalWhenTheWindowIsDestroyedMeanwhile) {
    present();
    click(kClose);
    ASSERT_TRUE(waitToHear("will dismiss"));
    window_.reset();
    ASSERT_TRUE(waitToHear("did dismiss"));
    EXPECT_THAT(heard(), ElementsAre("will dismiss", "did dismiss"));
}

TEST_F(VexmoraWidgetScreenTest, MayBeDestroyedFromInsideOfTheOperationsOfTheDelegate) {
    present();
    click(kClose);
    ASSERT_TRUE(waitToHear("will dismiss"));
    whenHeard_ = [this] { delete screen_.data(); };
    ASSERT_TRUE(waitToHear("did dismiss"));

    screen_ = new VexmoraWidgetScreen(behind_);
    present();
    whenHeard_ = [this] { window_.reset(); };
    click(kClose);
    ASSERT_TRUE(App::waitFor([&] { return !screen_; }));
    EXPECT_FALSE(ad_->window());
}

}  // namespace
