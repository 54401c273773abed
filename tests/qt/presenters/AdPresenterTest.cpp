// SPDX-License-Identifier: MIT
#include <QtCore/QPointer>
#include <QtGui/QAccessible>
#include <set>

#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "tests/RecordingOpener.h"
#include "tests/qt/presenters/PresenterTest.h"

using testing::ElementsAre;
using testing::IsEmpty;
using namespace VexmoraSDK;
using platform::Color;
using platform::Rect;

namespace {

constexpr Color kRed{1, 0, 0, 1};
constexpr Color kGreen{0, 1, 0, 1};
constexpr Color kBlue{0, 0, 1, 1};

class AdPresenterTest : public PresenterTest {
 protected:
    QObject* add(const std::string& container) {
        return app_->addAd(createView(container, "320x60"));
    }

    QObject* addDrawn() {
        heard();
        auto* ad = add("home");
        EXPECT_TRUE(waitToHear("received"));
        heard();
        return ad;
    }

    const std::string address_ = server_.address() + "/landing/red?sig=%41%c3";
    RecordingOpener opener_;
};

INSTANTIATE_TEST_SUITE_P(Of, AdPresenterTest, kToolkits, nameOf);

std::shared_ptr<VexmoraView> plain(Rect frame, Color color) {
    auto view = VexmoraBannerView::create(frame);
    view->setBackgroundColor(color);
    return view;
}

TEST_P(AdPresenterTest, PaintsTheViewSharplyInItsPlaceOnEveryScreen) {
    const auto view = plain({{0, 0}, {100, 60}}, kRed);
    view->addSubview(plain({{50.5, 30}, {49.5, 30}}, kBlue));
    app_->addAd(view);
    for (const int scale : {1, 2, 3, 2}) {
        app_->setScale(scale);
        const double pixel = 1.0 / scale;
        EXPECT_EQ(colorAt(10, 20), Qt::red);
        EXPECT_EQ(colorAt(10 - pixel, 20), Qt::white);
        EXPECT_EQ(colorAt(60 - pixel, 50), Qt::red);
        EXPECT_EQ(colorAt(61, 50), Qt::blue);
        EXPECT_EQ(colorAt(110 - pixel, 80 - pixel), Qt::blue);
        EXPECT_EQ(colorAt(110, 80 - pixel), Qt::white);
    }
    EXPECT_EQ(colorAt(60, 50), Qt::red) << "half a point";
    EXPECT_EQ(colorAt(60.5, 50), Qt::blue);
}

TEST_P(AdPresenterTest, ShowsAPictureOfTwiceTheSizePixelForPixelOnScreensOfTwoPixelsPerPoint) {
    // Black and white columns in the presenter's 380 × 100 points.
    constexpr int kWidth = 760;
    constexpr int kHeight = 200;
    auto pixels = std::make_unique<std::uint32_t[]>(kWidth * kHeight);
    for (int i = 0; i < kWidth * kHeight; ++i)
        pixels[std::size_t(i)] = i % 2 == 0 ? 0xff000000 : 0xffffffff;
    const auto view = plain({{0, 0}, {kWidth, kHeight}}, kRed);
    view->addSubview(platform::ImageView::create(
        std::make_shared<const platform::Image>(kWidth, kHeight, std::move(pixels), true)));
    app_->setScale(2);
    auto* ad = app_->addAd(view);
    ad->setProperty("fillMode", 1);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(colorAt(10 + i * 0.5, 70), i % 2 == 0 ? Qt::black : Qt::white) << i;
    EXPECT_EQ(colorAt(389.5, 119.5), Qt::white);
}

TEST_P(AdPresenterTest, BeginsAtAWholePixelAlsoWhereItsMiddleIsNone) {
    constexpr int kWidth = 379;
    const auto view = plain({{0, 0}, {kWidth, 100}}, kRed);
    for (int x = 0; x < kWidth; x += 2)
        view->addSubview(plain({{double(x), 0}, {1, 100}}, kBlue));
    app_->addAd(view)->setProperty("fillMode", 1);
    const QColor first = colorAt(100, 70);
    EXPECT_THAT((std::set{first.rgb(), colorAt(101, 70).rgb()}),
                ElementsAre(QColor(Qt::blue).rgb(), QColor(Qt::red).rgb()));
}

TEST_P(AdPresenterTest, LiesAtTheRightInRightToLeftLayouts) {
    app_->addAd(plain({{0, 0}, {100, 60}}, kRed));
    EXPECT_EQ(colorAt(12, 22), Qt::red);
    app_->mirror();
    EXPECT_EQ(colorAt(12, 22), Qt::white);
    EXPECT_EQ(colorAt(288, 22), Qt::white);
    EXPECT_EQ(colorAt(292, 22), Qt::red);
    EXPECT_EQ(colorAt(388, 78), Qt::red);
}

TEST_P(AdPresenterTest, FollowsTheViewThatItShowsAndNoOther) {
    const auto view = plain({{0, 0}, {100, 60}}, kRed);
    auto* ad = app_->addAd(view);
    EXPECT_EQ(app_->sizeOf(ad), QSizeF(100, 60));
    EXPECT_EQ(colorAt(105, 75), Qt::red);
    view->setBackgroundColor(kBlue);
    EXPECT_EQ(colorAt(105, 75), Qt::blue);
    view->setFrame({{0, 0}, {200, 60}});
    EXPECT_EQ(app_->sizeOf(ad), QSizeF(200, 60));
    EXPECT_EQ(colorAt(205, 75), Qt::blue);
    view->setHidden(true);
    EXPECT_EQ(colorAt(105, 75), Qt::white);

    const auto other = plain({{0, 0}, {50, 50}}, kGreen);
    app_->setView(ad, other);
    view->setHidden(false);
    view->setFrame({{0, 0}, {300, 60}});
    EXPECT_EQ(app_->sizeOf(ad), QSizeF(50, 50));
    EXPECT_EQ(colorAt(15, 25), Qt::green);

    app_->setView(ad, nullptr);
    EXPECT_EQ(app_->sizeOf(ad), QSizeF(0, 0));
    EXPECT_EQ(colorAt(15, 25), Qt::white);
    app_->setView(ad, other);
    delete ad;
    view->setFrame({{0, 0}, {100, 100}});
    other->setFrame({{0, 0}, {100, 100}});
}

TEST_P(AdPresenterTest, OpensTheAddressWhenItIsTappedAndNotWhenItIsDragged) {
    auto* ad = addDrawn();
    press({20, 30});
    move({120, 30});
    move({20, 30});
    release({20, 30});
    click({20, 30}, Qt::RightButton);
    click({350, 110});
    App::runQueuedBlocks();
    EXPECT_THAT(heard(), IsEmpty());

    press({20, 30});
    move({21, 31});
    release({21, 31});
    EXPECT_TRUE(waitToHear("leaves")) << "no hand is that steady";
    EXPECT_THAT(opener_.opened(), ElementsAre(address_));

    heard();
    auto* link = QAccessible::queryAccessibleInterface(ad);
    ASSERT_TRUE(link);
    EXPECT_EQ(link->role(), QAccessible::Link);
    EXPECT_EQ(link->text(QAccessible::Name), QLatin1String("Advertisement"));
    link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(waitToHear("leaves"));
    EXPECT_THAT(opener_.opened(), ElementsAre(address_));
}

TEST_P(AdPresenterTest, DropsAQueuedTapIfTheAdIsDisabledOrReplaced) {
    const auto next = createView("home", "320x60");
    ASSERT_TRUE(waitToHear("received"));
    auto* ad = addDrawn();
    clickAtOnce({20, 30});
    App::runQueuedBlocks();
    EXPECT_THAT(heard(), ElementsAre("leaves"));
    clickAtOnce({20, 30});
    ad->setProperty("enabled", false);
    App::runQueuedBlocks();
    clickAtOnce({20, 30});
    App::runQueuedBlocks();
    ad->setProperty("enabled", true);
    clickAtOnce({20, 30});
    app_->setView(ad, next);
    App::runQueuedBlocks();
    press({20, 30});
    app_->setView(ad, plain({{0, 0}, {100, 60}}, kRed));
    app_->setView(ad, next);
    release({20, 30});
    App::runQueuedBlocks();
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_P(AdPresenterTest, BoundsItsSizeHoweverLargeThePictureIs) {
    const auto view = plain({{0, 0}, {1, 1'000'000}}, kRed);
    auto* ad = app_->addAd(view);
    EXPECT_EQ(app_->sizeOf(ad), QSizeF(1, 4096));
    view->setFrame({{0, 0}, {1'000'000, 1}});
    EXPECT_EQ(app_->sizeOf(ad), QSizeF(4096, 1));
}

TEST_P(AdPresenterTest, MayBeDestroyedInsideItsDelegate) {
    for (const char* container : {"home", "nothing"}) {
        QPointer<QObject> ad = add(container);
        events_->reactOnce([ad] { delete ad.data(); });
        EXPECT_TRUE(App::waitFor([&] { return !ad; })) << container;
    }
    QPointer<QObject> ad = addDrawn();
    events_->reactOnce([ad] { delete ad.data(); });
    click({20, 30});
    click({20, 30});
    EXPECT_TRUE(App::waitFor([&] { return !ad; }));
    EXPECT_THAT(opener_.opened(), ElementsAre(address_));
}

TEST_P(AdPresenterTest, MayBeDestroyedWithRequestsInFlight) {
    for (const char* container :
         {"fault-picture-no-store", "fault-slow", "fault-cut-short", "fault-picture-slow"}) {
        const auto sent = server_.requests().size();
        const auto* ad = add(container);
        EXPECT_TRUE(App::waitFor([&] { return server_.requests().size() > sent; }));
        delete ad;
    }
    addDrawn();
}

}  // namespace
