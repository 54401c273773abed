// SPDX-License-Identifier: MIT
#include <QtCore/QAnimationDriver>
#include <QtCore/QPointer>
#include <QtCore/QTranslator>
#include <QtCore/QVariantAnimation>
#include <QtGui/QAccessible>
#include <QtGui/QPointingDevice>

#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "tests/qt/presenters/PresenterTest.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using namespace VexmoraSDK;

namespace {

/// Stops animations while it lives.
class HeldAnimations : public QAnimationDriver {
 public:
    HeldAnimations() { install(); }
    ~HeldAnimations() override { uninstall(); }
    qint64 elapsed() const override { return 0; }
    void advance() override {}
};

/// Acts once when an object gets the keyboard or loses it.
class FocusWatch : public QObject {
 public:
    FocusWatch(QObject* watched, QEvent::Type type, std::function<void()> act)
        : type_(type), act_(std::move(act)) {
        watched->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == type_ && act_) std::exchange(act_, nullptr)();
        return false;
    }

 private:
    const QEvent::Type type_;
    std::function<void()> act_;
};

/// An interstitial ad to be presented over the window.
class ScreenPresenterTest : public PresenterTest {
 protected:
    ScreenPresenterTest() {
        ad_->setFrame({{0, 0}, {400, 300}});
        EXPECT_TRUE(waitToHear("received"));
        heard();
    }

    /// Presents the ad and waits until it has moved in.
    void present() {
        EXPECT_TRUE(app_->present(ad_));
        // The picture's top, 250 points high in the 300 of the window.
        EXPECT_TRUE(App::waitFor([&] { return colorAt(60, 26) == Qt::red; }));
        EXPECT_EQ(colorAt(340, 270), Qt::blue);
    }

    /// Sends input of every kind except left clicks.
    void inputAll() {
        click({200, 150}, Qt::RightButton);
        const QPointF there = app_->window()->mapToGlobal(QPointF(200, 150));
        QWheelEvent wheel({200, 150}, there, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(app_->window(), &wheel);
        QTest::touchEvent(app_->window(), finger_.get()).press(0, {200, 150}).press(1, {150, 150});
        QTest::touchEvent(app_->window(), finger_.get())
            .release(0, {200, 150})
            .release(1, {150, 150});
        type(Qt::Key_A);
        App::runQueuedBlocks();
    }

    static constexpr QPoint kClose{400 - 12 - 18, 12 + 18};

    const std::unique_ptr<QPointingDevice> finger_{QTest::createTouchDevice()};

    const QPointer<QObject> focused_ = app_->focused();
    const std::shared_ptr<VexmoraView> ad_ = createView("home", "300x250");
};

INSTANTIATE_TEST_SUITE_P(Of, ScreenPresenterTest, kToolkits, nameOf);

TEST_P(ScreenPresenterTest, PresentsTheAdCentredAndRemovesItWhenClosed) {
    EXPECT_FALSE(app_->present(nullptr));
    EXPECT_FALSE(app_->present(VexmoraViewFactory::createView("home", "320x60", nullptr)));
    present();
    EXPECT_TRUE(app_->isPresenting());
    EXPECT_FALSE(app_->present(ad_));
    auto* const screen = app_->screen();
    EXPECT_TRUE(screen->property("closeRect").toRectF().contains(kClose));
    EXPECT_EQ(screen->property("closeLabel"), QLatin1String("Close advertisement"));
    EXPECT_TRUE(App::waitFor([&] { return !screen->property("moving").toBool(); }));
    EXPECT_TRUE(waitForCursor(kClose, Qt::PointingHandCursor));
    EXPECT_TRUE(waitForCursor({200, 150}, Qt::ArrowCursor));

    click(kClose);
    ASSERT_TRUE(waitToHear("did dismiss"));
    EXPECT_THAT(heard(), ElementsAre("will dismiss", "did dismiss"));
    EXPECT_FALSE(app_->isPresenting());
    EXPECT_NE(colorAt(60, 150), Qt::red);
    click(kClose);
    EXPECT_EQ(app_->clicks(), 1);
    present();
    click(kClose);
    EXPECT_TRUE(waitToHear("did dismiss"));
}

TEST_P(ScreenPresenterTest, LeavesAViewToTheScreenThatPresentsIt) {
    present();
    const QPointer<QObject> first = app_->screen();
    app_->addScreen();
    EXPECT_FALSE(app_->present(ad_));
    delete first;
    EXPECT_TRUE(app_->present(ad_));
}

TEST_P(ScreenPresenterTest, LetsTheHostPresentOrAnimateWhenTheAdHasLeft) {
    present();
    app_->onPresentingChanged([this] {
        if (app_->isPresenting()) return;
        QVariantAnimation other;
        other.setDuration(1);
        other.start();
        EXPECT_TRUE(App::waitFor([&] { return other.state() == QVariantAnimation::Stopped; }));
        hear("animated");
    });
    app_->close();
    ASSERT_TRUE(waitToHear("animated"));

    present();
    heard();
    const FocusWatch watch(focused_, QEvent::FocusIn, [this] { app_->present(ad_); });
    app_->close();
    ASSERT_TRUE(waitToHear("did dismiss"));
    EXPECT_TRUE(app_->isPresenting());
    EXPECT_TRUE(App::waitFor([&] { return colorAt(60, 26) == Qt::red; }));
    type(Qt::Key_Escape);
    EXPECT_TRUE(App::waitFor([&] { return !app_->isPresenting(); }));
    EXPECT_EQ(app_->escapes(), 0);
}

TEST_P(ScreenPresenterTest, GivesTheKeyboardBackAlsoInAWindowThatDoesNotHaveIt) {
    present();
    {
        QWindow other;
        other.show();
        other.requestActivate();
        ASSERT_TRUE(App::waitFor([&] { return QGuiApplication::focusWindow() == &other; }));
        app_->close();
        ASSERT_TRUE(App::waitFor([&] { return !app_->isPresenting(); }));
    }
    app_->window()->requestActivate();
    EXPECT_TRUE(App::waitFor([&] { return app_->focused() == focused_; }));

    present();
    delete app_->screen();
    EXPECT_EQ(app_->focused(), focused_);
}

TEST_P(ScreenPresenterTest, ShowsAWhiteCrossToCloseTheAdWith) {
    present();
    const auto lightness = [this](double dx, double dy) {
        return colorAt(kClose.x() + dx, kClose.y() + dy).lightness();
    };
    EXPECT_GT(lightness(0, 0) + lightness(1, 1) + lightness(-1, 1), 300);
    for (const auto& [dx, dy] : {std::pair(-6, -4), {5, -4}, {-6, 6}, {4, 6}})
        EXPECT_GT(lightness(dx, dy), 100) << dx << ' ' << dy;
    for (const auto& [dx, dy] : {std::pair(10, 0), {-10, 0}, {0, 10}, {0, -10}, {16, 0}, {0, 16}})
        EXPECT_LT(lightness(dx, dy), 40) << dx << ' ' << dy;
}

TEST_P(ScreenPresenterTest, BlocksInputAndPassesOnTapsOnTheCloseButtonOnly) {
    inputAll();
    EXPECT_THAT(app_->inputs(),
                UnorderedElementsAre(QEvent::MouseButtonPress, QEvent::Wheel, QEvent::TouchBegin,
                                     QEvent::KeyPress, QEvent::KeyRelease));
    present();
    inputAll();
    for (const QPoint point : {QPoint(200, 150), {60, 30}, {5, 5}})
        click(point);
    App::runQueuedBlocks();
    EXPECT_THAT(app_->inputs(), IsEmpty());
    EXPECT_TRUE(app_->isPresenting());

    // The item or widget of the interstitial ignores presses too.
    type(Qt::Key_Escape);
    ASSERT_TRUE(waitToHear("did dismiss"));
    auto* inPlace = app_->addAd(ad_);
    EXPECT_EQ(app_->sizeOf(inPlace), QSizeF(0, 0));
    QMetaObject::invokeMethod(inPlace, "press");
    click({200, 150});
    App::runQueuedBlocks();
    EXPECT_THAT(heard(), ElementsAre("will dismiss", "did dismiss"));
    EXPECT_TRUE(app_->presentAd(inPlace));
}

TEST_P(ScreenPresenterTest, ClosesOnceHoweverOftenItIsToldTo) {
    // Something else could have the keyboard, too.
    app_->moveAd(app_->addAd(createView("home", "320x60")), {10, 235});
    ASSERT_TRUE(waitToHear("received"));
    heard();
    present();
    {
        const HeldAnimations held;
        for (int i = 0; i < 2; ++i)
            clickAtOnce(kClose);
        EXPECT_THAT(heard(), IsEmpty()) << "the second comes before anything comes of the first";
        app_->close();
        for (int i = 0; i < 2; ++i) {
            for (const auto key : {Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Space})
                type(key);
            EXPECT_TRUE(waitToHear("will dismiss"));
            click(kClose);
        }
    }
    ASSERT_TRUE(waitToHear("did dismiss"));
    EXPECT_THAT(heard(), ElementsAre("will dismiss", "did dismiss"));
    EXPECT_EQ(app_->escapes(), 0);
    EXPECT_EQ(app_->clicks(), 0);
    EXPECT_EQ(app_->focused(), focused_);
    type(Qt::Key_Escape);
    EXPECT_EQ(app_->escapes(), 1);

    present();
    type(Qt::Key_Escape);
    EXPECT_TRUE(waitToHear("did dismiss"));
}

TEST_P(ScreenPresenterTest, GivesTheKeyboardAndScreenReadersACloseButtonThatStaysInSight) {
    present();
    app_->setInsets(40, 10);
    app_->resize({350, 280});
    click({350 - 10 - 12 - 18, 40 + 12 + 18});
    ASSERT_TRUE(waitToHear("did dismiss"));
    heard();

    EXPECT_TRUE(app_->present(ad_));
    type(Qt::Key_Tab);
    type(Qt::Key_Tab);
    auto* const button = QAccessible::queryAccessibleInterface(app_->focused());
    ASSERT_TRUE(button);
    EXPECT_EQ(button->role(), QAccessible::Button);
    EXPECT_EQ(button->text(QAccessible::Name), QLatin1String("Close advertisement"));
    const QRect seen(app_->window()->mapToGlobal(QPoint(350 - 10 - 12 - 36, 40 + 12)),
                     QSize(36, 36));
    EXPECT_TRUE(App::waitFor([&] { return button->rect() == seen; }));
    type(Qt::Key_Return);
    ASSERT_TRUE(waitToHear("did dismiss"));
    EXPECT_THAT(heard(), ElementsAre("will dismiss", "did dismiss"));

    app_->resize({400, 300});
    present();
    type(Qt::Key_Tab);
    QAccessible::queryAccessibleInterface(app_->focused())
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(waitToHear("did dismiss"));
}

TEST_P(ScreenPresenterTest, PutsTheCloseButtonAtTheLeftInRightToLeftLayouts) {
    app_->setInsets(40, 10);
    present();
    app_->mirror();
    click({12 + 18, 40 + 12 + 18});
    ASSERT_TRUE(waitToHear("did dismiss"));
    present();
    click({12 + 18, 40 + 12 + 18});
    EXPECT_TRUE(waitToHear("did dismiss"));
}

TEST_P(ScreenPresenterTest, SpeaksTheLanguageThatTheAppChangesTo) {
    present();
    type(Qt::Key_Tab);
    auto* const button = app_->focused();
    auto* const banner = app_->addAd(nullptr);
    const auto waitToBeNamed = [&](const char* ad, const char* close) {
        const auto isNamed = [](QObject* object, const char* name) {
            return QAccessible::queryAccessibleInterface(object)->text(QAccessible::Name) ==
                   QString::fromUtf8(name);
        };
        return App::waitFor([&] {
            return isNamed(app_->screen(), ad) && isNamed(banner, ad) && isNamed(button, close);
        });
    };
    {
        QTranslator words;
        const auto folder = platform::Bundle::shippedLibraryFolder() / "translations";
        ASSERT_TRUE(words.load(QLocale(QLocale::German), QLatin1String("vexmorasdk"),
                               QLatin1String("_"), QString::fromStdString(folder.string())));
        QCoreApplication::installTranslator(&words);
        EXPECT_TRUE(waitToBeNamed("Werbung", "Werbung schließen"));
    }
    EXPECT_TRUE(waitToBeNamed("Advertisement", "Close advertisement"));
}

TEST_P(ScreenPresenterTest, CompletesTheDismissalWhenDestroyed) {
    present();
    click(kClose);
    ASSERT_TRUE(waitToHear("will dismiss"));
    delete app_->screen();
    ASSERT_TRUE(waitToHear("did dismiss"));
    EXPECT_THAT(heard(), ElementsAre("will dismiss", "did dismiss"));
}

TEST_P(ScreenPresenterTest, MayBeDestroyedInsideItsDelegate) {
    present();
    click(kClose);
    ASSERT_TRUE(waitToHear("will dismiss"));
    events_->reactOnce([this] { delete app_->screen(); });
    ASSERT_TRUE(waitToHear("did dismiss"));

    app_->addScreen();
    present();
    events_->reactOnce([this] { delete app_->screen(); });
    click(kClose);
    ASSERT_TRUE(App::waitFor([&] { return !app_->screen(); }));
    EXPECT_FALSE(ad_->window());

    app_->addScreen();
    app_->onPresentingChanged([this] { delete app_->screen(); });
    app_->present(ad_);
    EXPECT_FALSE(app_->screen());
}

}  // namespace
