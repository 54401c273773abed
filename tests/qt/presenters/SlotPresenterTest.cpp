// SPDX-License-Identifier: MIT
#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QAccessible>
#include <set>

#include "tests/RecordingOpener.h"
#include "tests/qt/presenters/PresenterTest.h"

using testing::ElementsAre;
using testing::IsEmpty;
using namespace VexmoraSDK;
using namespace std::chrono_literals;

namespace {

/// An ad that an item or widget requests by itself, on the test's clock.
class SlotPresenterTest : public PresenterTest {
 protected:
    SlotPresenterTest() { add(); }

    void add() {
        ad_ = app_->addAd(nullptr);
        slot().setClock([now = now_] { return *now; });
        app_->listen(ad_, [this](const char* signal) {
            const std::set<std::string> details{"errorChanged", "adChanged", "viewableChanged"};
            if (!details.contains(signal)) hear(signal);
            if (signal == lastWord_) lastAct_();
        });
    }

    AdSlot& slot() { return *app_->slotOf(ad_); }
    QVariant property(const char* name) { return ad_->property(name); }
    void ask(const char* container, const char* size) {
        ad_->setProperty("containerId", QLatin1String(container));
        if (ad_) ad_->setProperty("adSize", QLatin1String(size));
    }
    void askAndWait(const char* container, const char* size) {
        ask(container, size);
        ASSERT_TRUE(waitToHear("didReceiveAd"));
        heard();
    }
    void invoke(const char* method) { QMetaObject::invokeMethod(ad_, method); }

    void pass(AdSlot::Duration time) {
        *now_ += time;
        slot().wake();
    }

    void minimize() {
        // It takes a window manager to minimise a window.
        if (QGuiApplication::platformName() == QLatin1String("xcb"))
            app_->window()->hide();
        else
            app_->window()->showMinimized();
        EXPECT_TRUE(
            App::waitFor([&] { return slot().visibleFraction() == 0 || !slot().isActive(); }));
    }

    bool waitForVisible(double fraction) {
        return App::waitFor(
            [&] { return qFuzzyCompare(slot().visibleFraction() + 1, fraction + 1); });
    }

    RecordingOpener opener_;
    /// Shared, because the presenter outlives the test.
    const std::shared_ptr<AdSlot::Time> now_ = std::make_shared<AdSlot::Time>(1000h);
    QPointer<QObject> ad_;
    /// The event at which `lastAct_` runs, which destroys the ad unless a test wants something
    /// else.
    std::string lastWord_;
    std::function<void()> lastAct_ = [this] { delete ad_.data(); };
};

INSTANTIATE_TEST_SUITE_P(Of, SlotPresenterTest, kToolkits, nameOf);

TEST_P(SlotPresenterTest, KeepsItsPlaceAndReportsItsStatus) {
    ask("home", "320x60");
    EXPECT_EQ(app_->sizeOf(ad_), QSizeF(320, 60));
    EXPECT_EQ(property("status").toInt(), 1);
    ASSERT_TRUE(waitToHear("didReceiveAd"));
    EXPECT_THAT(heard(), ElementsAre("statusChanged", "statusChanged", "didReceiveAd"));
    EXPECT_EQ(property("status").toInt(), 2);
    EXPECT_EQ(colorAt(15, 25), Qt::red);

    const auto first = slot().view();
    invoke("reload");
    EXPECT_TRUE(App::waitFor([&] {
        EXPECT_EQ(colorAt(15, 25), Qt::red) << "until the next is drawn";
        return slot().view() != first;
    }));
    EXPECT_THAT(heard(), ElementsAre("didReceiveAd"));

    ask("nothing", "320x60");
    EXPECT_EQ(colorAt(15, 25), Qt::white);
    ASSERT_TRUE(waitToHear("didHaveError"));
    EXPECT_EQ(property("status").toInt(), 3);
    EXPECT_EQ(property("errorCode").toInt(), 2);
    EXPECT_EQ(property("errorString").toString(), QLatin1String("ParsingError"));

    lastWord_ = "adChanged";
    lastAct_ = [this] { ask("nothing", "320x60"); };
    heard();
    ask("home", "320x60");
    EXPECT_TRUE(waitToHear("didHaveError"));
    for (const auto& word : heard())
        EXPECT_NE(word, "didReceiveAd") << "of an ad that was dropped";
}

TEST_P(SlotPresenterTest, ShowsAHandWhereATapOpensTheAd) {
    askAndWait("home", "320x60");
    EXPECT_TRUE(waitForCursor({20, 30}, Qt::PointingHandCursor));
    ask("nothing", "320x60");
    EXPECT_NE(app_->cursorAt({20, 30}), Qt::PointingHandCursor);
}

TEST_P(SlotPresenterTest, FitsTheAdIntoItsPlaceOnRequest) {
    ad_->setProperty("fillMode", 1);
    askAndWait("home", "320x60");
    EXPECT_EQ(app_->sizeOf(ad_), QSizeF(320, 60));
    // In 380 × 100 points the ad is 71 high and vertically centred.
    EXPECT_EQ(colorAt(12, 20 + 10), Qt::white);
    EXPECT_EQ(colorAt(12, 20 + 18), Qt::red);
    EXPECT_EQ(colorAt(388, 20 + 80), Qt::blue);
    click({388, 20 + 5});
    click({388, 20 + 80});
    EXPECT_TRUE(waitToHear("willLeaveApplication"));
    EXPECT_EQ(opener_.opened().size(), 1U);
}

TEST_P(SlotPresenterTest, IsViewableAfterASecondInSight) {
    askAndWait("home", "320x60");
    EXPECT_TRUE(waitForVisible(1));
    app_->moveAd(ad_, {-192, 20});
    EXPECT_TRUE(waitForVisible(0.4));
    pass(1h);
    app_->moveAd(ad_, {0, 20});
    EXPECT_TRUE(waitForVisible(1));
    pass(999ms);
    app_->cover(true);
    EXPECT_TRUE(waitForVisible(200.0 / 320));
    app_->moveAd(ad_, {200, 20});
    EXPECT_TRUE(waitForVisible(0));
    app_->cover(false);
    EXPECT_TRUE(waitForVisible(200.0 / 320));
    pass(999ms);
    minimize();
    app_->window()->showNormal();
    EXPECT_TRUE(waitForVisible(200.0 / 320));
    pass(999ms);
    EXPECT_THAT(heard(), IsEmpty());
    pass(1ms);
    pass(1h);
    EXPECT_THAT(heard(), ElementsAre("becameViewable"));
    EXPECT_TRUE(property("viewable").toBool());
}

TEST_P(SlotPresenterTest, IsNotAskedForAnewInTheBackground) {
    ad_->setProperty("refreshInterval", 10);
    askAndWait("home", "320x60");
    EXPECT_TRUE(waitForVisible(1));
    minimize();
    EXPECT_EQ(slot().untilNextWake(), std::nullopt);
    pass(1h);
    app_->window()->showNormal();
    EXPECT_TRUE(waitForVisible(1));
    const auto first = slot().view();
    pass(9s);
    EXPECT_EQ(slot().untilNextWake(), 1s);
    EXPECT_EQ(slot().view(), first);
    pass(1s);
    EXPECT_TRUE(waitToHear("didReceiveAd"));
}

TEST_P(SlotPresenterTest, DoesNotWakeTheAppWhileNothingChanges) {
    for (int i = 0; i < 10; ++i) {
        if (i > 0) add();
        askAndWait("home", "320x60");
        EXPECT_TRUE(waitForVisible(1));
        pass(1s);
        EXPECT_EQ(slot().untilNextWake(), std::nullopt);
    }
    struct Work : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Timer) ++timers;
            return false;
        }
        int wakes = 0;
        int timers = 0;
    } work;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &work,
                     [&work] { ++work.wakes; });
    qGuiApp->installEventFilter(&work);
    // The last frames and the visibility checks after them must have ended. Timers of several ads
    // may go off in one wake-up; one is the test's own.
    EXPECT_TRUE(App::waitFor([&work] {
        work.wakes = work.timers = 0;
        QEventLoop loop;
        QTimer::singleShot(1s, &loop, &QEventLoop::quit);
        loop.exec();
        return work.wakes <= 3 && work.timers <= 3;
    }));
}

TEST_P(SlotPresenterTest, SupportsKeyboardAndScreenReaders) {
    auto* const link = QAccessible::queryAccessibleInterface(ad_);
    const auto isFound = [link] {
        return link->parent()->indexOfChild(link) >= 0 && !link->state().invisible;
    };
    EXPECT_FALSE(isFound()) << "nothing is shown";
    ad_->setProperty("containerId", QLatin1String("home"));
    ad_->setProperty("adType", 1);
    ASSERT_TRUE(waitToHear("didReceiveAd"));
    EXPECT_TRUE(isFound());
    EXPECT_EQ(link->text(QAccessible::Name),
              QLatin1String("Advertisement, Title, What it is about., Advertiser"));
    EXPECT_TRUE(link->state().focusable);
    type(Qt::Key_Tab);
    EXPECT_EQ(app_->focused(), ad_);
    type(Qt::Key_Return);
    EXPECT_TRUE(waitToHear("willLeaveApplication"));
    heard();
    for (const auto key : {Qt::Key_Return, Qt::Key_Space}) {
        QKeyEvent held(QEvent::KeyPress, key, {}, {}, true);
        QCoreApplication::sendEvent(app_->window(), &held);
    }
    App::runQueuedBlocks();
    EXPECT_THAT(heard(), IsEmpty()) << "a key that is held";
}

TEST_P(SlotPresenterTest, SurvivesATapOnAnInterstitialAd) {
    EXPECT_FALSE(app_->presentAd(ad_));
    ask("home", "300x250");
    EXPECT_FALSE(app_->presentAd(ad_));
    ASSERT_TRUE(waitToHear("didReceiveAd"));
    heard();
    pass(2s);
    EXPECT_EQ(app_->sizeOf(ad_), QSizeF(0, 0));
    ASSERT_TRUE(app_->presentAd(ad_));
    EXPECT_FALSE(app_->presentAd(ad_));
    EXPECT_TRUE(waitForVisible(1));

    click({200, 150});
    invoke("press");
    for (const auto key : {Qt::Key_Return, Qt::Key_Space})
        type(key);
    App::runQueuedBlocks();
    EXPECT_THAT(heard(), IsEmpty());
    app_->resize({350, 280});
    EXPECT_TRUE(App::waitFor([&] { return colorAt(26, 16) == Qt::red; }));
    EXPECT_NE(colorAt(24, 16), Qt::red);
    pass(1s);
    EXPECT_THAT(heard(), ElementsAre("becameViewable"));
    invoke("reload");
    ASSERT_TRUE(waitToHear("didReceiveAd"));
    App::runQueuedBlocks();
    EXPECT_EQ(slot().visibleFraction(), 0) << "the next is not presented yet";
    heard();
    app_->close();
    ASSERT_TRUE(waitToHear("didDismissScreen"));
    EXPECT_THAT(heard(), ElementsAre("willDismissScreen", "didDismissScreen"));
    EXPECT_EQ(slot().visibleFraction(), 0);

    pass(1h);
    EXPECT_FALSE(app_->presentAd(ad_)) << "it is too old";
}

TEST_P(SlotPresenterTest, MayBeDestroyedFromInsideOfItsSignals) {
    for (const char* word : {"statusChanged", "errorChanged", "adChanged", "didReceiveAd",
                             "viewableChanged", "becameViewable", "willLeaveApplication",
                             "didHaveError", "willDismissScreen", "didDismissScreen"}) {
        if (!ad_) add();
        lastWord_ = word;
        const bool isOnScreen = lastWord_.ends_with("DismissScreen");
        ask(lastWord_ == "didHaveError" ? "nothing" : "home", isOnScreen ? "300x250" : "320x60");
        EXPECT_TRUE(App::waitFor([&] {
            if (ad_ && isOnScreen && app_->presentAd(ad_)) app_->close();
            if (ad_ && slot().ad()) click({20, 30});
            if (ad_ && slot().visibleFraction() == 1) pass(1s);
            return !ad_;
        })) << word;
    }
}

}  // namespace
