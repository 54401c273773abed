#include "VexmoraSDK/widgets/VexmoraWidget.h"

#include <QtGui/QAccessible>
#include <QtWidgets/QVBoxLayout>

#include "tests/qt/RecordingOpener.h"
#include "tests/widgets/WidgetTest.h"

using testing::ElementsAre;
using VexmoraSDK::App;
using VexmoraSDK::LocalAds;
using VexmoraSDK::RecordingOpener;
using VexmoraSDK::VexmoraViewFactory;
using VexmoraSDK::VexmoraWidget;
using VexmoraSDK::WidgetTest;

namespace {

class VexmoraWidgetTest : public WidgetTest {
 protected:
    /// At (10, 20).
    VexmoraWidget* add(const std::string& container) {
        auto* ad = new VexmoraWidget(VexmoraViewFactory::createView(container, "320x60", delegate_),
                                     window_.get());
        ad->move(10, 20);
        ad->resize(380, 100);
        ad->show();
        return ad;
    }

    VexmoraWidget* addDrawn() {
        heard();
        auto* ad = add("home");
        EXPECT_TRUE(waitToHear("received"));
        heard();
        return ad;
    }

    const std::string address_ = LocalAds::server().address() + "/landing/red?sig=%41%c3";
    RecordingOpener opener_;
};

TEST_F(VexmoraWidgetTest, GetsTheSizeOfItsAdFromALayout) {
    auto* ad = new VexmoraWidget(VexmoraViewFactory::createView("small", "320x60", delegate_));
    auto* layout = new QVBoxLayout(window_.get());
    layout->addWidget(ad);
    EXPECT_EQ(ad->sizeHint(), QSize(0, 0));
    ASSERT_TRUE(waitToHear("received"));
    EXPECT_TRUE(App::waitFor([&] { return ad->size() == QSize(300, 50); }));
}

TEST_F(VexmoraWidgetTest, PaintsTheAdSharplyInItsPlace) {
    auto* ad = addDrawn();
    for (const int scale : {1, 2, 3}) {
        const double pixel = 1.0 / scale;
        EXPECT_EQ(colorAt(10, 20, scale), Qt::red);
        EXPECT_EQ(colorAt(10 - pixel, 20, scale), Qt::white);
        EXPECT_EQ(colorAt(168, 50, scale), Qt::red);
        EXPECT_EQ(colorAt(172, 50, scale), Qt::blue);
        EXPECT_EQ(colorAt(330 - pixel, 80 - pixel, scale), Qt::blue);
        EXPECT_EQ(colorAt(330, 80, scale), Qt::white);
    }
    const auto former = ad->view();
    ad->setView(nullptr);
    EXPECT_EQ(colorAt(10, 20), Qt::white);
    EXPECT_EQ(ad->sizeHint(), QSize(0, 0));
    ad->setView(former);
    EXPECT_EQ(colorAt(10, 20), Qt::red);
    delete ad;
    former->setHidden(true);
}

TEST_F(VexmoraWidgetTest,
       OpensTheAddressWhenItIsTappedOrPressedByAScreenReaderButNotWhenItIsDragged) {
    auto* link = QAccessible::queryAccessibleInterface(addDrawn());
    ASSERT_TRUE(link);
    EXPECT_EQ(link->role(), QAccessible::Link);
    EXPECT_EQ(link->text(QAccessible::Name), QLatin1String("Advertisement"));
    link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    ASSERT_TRUE(waitToHear("leaves"));
    EXPECT_THAT(opener_.opened(), ElementsAre(address_));

    auto* const device = window_->windowHandle();
    QTest::mousePress(device, Qt::LeftButton, {}, {20, 30});
    QTest::mouseMove(device, {120, 30});
    QTest::mouseMove(device, {20, 30});
    QTest::mouseRelease(device, Qt::LeftButton, {}, {20, 30});
    QTest::mouseClick(device, Qt::RightButton, {}, {20, 30});
    click({350, 100});
    heard();
    click({20, 30});
    ASSERT_TRUE(waitToHear("leaves"));
    EXPECT_THAT(heard(), ElementsAre("leaves"));
    EXPECT_THAT(opener_.opened(), ElementsAre(address_));
}

TEST_F(VexmoraWidgetTest, MayBeDestroyedFromInsideOfTheOperationsOfTheDelegate) {
    for (const char* container : {"home", "nothing"}) {
        QPointer<VexmoraWidget> ad = add(container);
        whenHeard_ = [ad] { delete ad.data(); };
        EXPECT_TRUE(App::waitFor([&] { return !ad; })) << container;
    }
    QPointer<VexmoraWidget> ad = addDrawn();
    whenHeard_ = [ad] { delete ad.data(); };
    click({20, 30});
    click({20, 30});
    EXPECT_TRUE(App::waitFor([&] { return !ad; }));
    EXPECT_THAT(opener_.opened(), ElementsAre(address_));
}

TEST_F(VexmoraWidgetTest, MayBeDestroyedWhileItsRequestsFly) {
    auto& server = LocalAds::server();
    for (const char* container : {"home", "fault-slow", "fault-cut-short", "fault-picture-slow"}) {
        const auto* ad = add(container);
        const auto sent = server.requests().size();
        EXPECT_TRUE(App::waitFor([&] { return server.requests().size() > sent; }));
        delete ad;
    }
    addDrawn();
}

}  // namespace
