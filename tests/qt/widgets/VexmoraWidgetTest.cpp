// SPDX-License-Identifier: MIT
#include "VexmoraSDK/widgets/VexmoraWidget.h"

#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"
#include "VexmoraSDK/widgets/VexmoraWidgetScreen.h"
#include "tests/AppTest.h"
#include "tests/LocalAds.h"

using namespace VexmoraSDK;

namespace {

class VexmoraWidgetTest : public AppTest {
 protected:
    // Its settings are in place before the first ad view reads them, whichever test comes first.
    VexmoraWidgetTest() { LocalAds::server(); }
};

TEST_F(VexmoraWidgetTest, TakesTheSizeOfItsViewInALayoutAndLessWhereThereIsNoRoom) {
    QWidget window;
    QVBoxLayout layout(&window);
    VexmoraWidget ad;
    layout.addWidget(&ad);
    window.resize(600, 400);
    window.show();
    EXPECT_EQ(ad.size(), QSize(0, 0));

    const auto view = VexmoraBannerView::create({{0, 0}, {320, 60}});
    view->setBackgroundColor(platform::Color{1, 0, 0, 1});
    ad.setView(view);
    EXPECT_TRUE(App::waitFor([&] { return ad.size() == QSize(320, 60); }));
    view->setFrame({{0, 0}, {320, 100}});
    EXPECT_TRUE(App::waitFor([&] { return ad.size() == QSize(320, 100); }));
    view->setFrame({{0, 0}, {1'000'000, 1'000'000}});
    App::runQueuedBlocks();
    EXPECT_EQ(window.size(), QSize(600, 400));
    EXPECT_EQ(window.minimumSizeHint().boundedTo({100, 100}), window.minimumSizeHint());

    ad.setFillMode(VexmoraWidget::FillMode::Fit);
    view->setFrame({{0, 0}, {1, 60'000}});
    EXPECT_EQ(ad.heightForWidth(400), 4096);
}

TEST_F(VexmoraWidgetTest, HasAPropertyForTheContentsOfTheAd) {
    [[maybe_unused]] const auto& server = LocalAds::server();
    VexmoraWidget widget;
    const auto ad = [&] { return widget.property("ad").value<std::optional<AdSlot::Ad>>(); };
    EXPECT_FALSE(ad());
    widget.setContainerId(QStringLiteral("home"));
    widget.setViewType(rawValue(VexmoraViewType::native));
    ASSERT_TRUE(App::waitFor([&] { return ad().has_value(); }));
    EXPECT_EQ(ad()->title, "Title");
}

TEST_F(VexmoraWidgetTest, IsPaintedAgainWhenItsViewChanges) {
    const auto view = VexmoraBannerView::create({{0, 0}, {320, 60}});
    struct Widget : VexmoraWidget {
        using VexmoraWidget::VexmoraWidget;
        void paintEvent(QPaintEvent* event) override {
            VexmoraWidget::paintEvent(event);
            ++paints;
        }
        int paints = 0;
    } ad(view);
    ad.show();
    EXPECT_TRUE(App::waitFor([&] { return ad.paints > 0; }));
    ad.paints = 0;
    view->setBackgroundColor(platform::Color{1, 0, 0, 1});
    EXPECT_TRUE(App::waitFor([&] { return ad.paints > 0; }));
}

TEST_F(VexmoraWidgetTest, LetsTheHostDestroyTheScreenThatTakesTheKeyboard) {
    QWidget window;
    QLineEdit edit(&window);
    const QPointer screen = new VexmoraWidgetScreen(&window);
    window.show();
    window.activateWindow();
    edit.setFocus();
    ASSERT_TRUE(App::waitFor([&] { return edit.hasFocus(); }));
    QTest::keyClicks(&edit, QStringLiteral("words"));
    QObject::connect(&edit, &QLineEdit::editingFinished, [&] { delete screen.data(); });
    const auto view = VexmoraInterstitialView::create({{0, 0}, {300, 250}});
    view->addSubview(platform::ImageView::create(nullptr));
    screen->present(view);
    EXPECT_FALSE(screen);
    EXPECT_FALSE(view->window());
}

}  // namespace
