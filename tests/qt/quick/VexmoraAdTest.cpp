// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/VexmoraAd.h"

#include <QtCore/QFile>
#include <QtCore/QTranslator>
#include <QtQuickWidgets/QQuickWidget>

#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/quick/VexmoraAdPicture.h"
#include "VexmoraSDK/quick/VexmoraScreenItem.h"
#include "tests/LocalAds.h"
#include "tests/RecordingOpener.h"
#include "tests/qt/quick/Scene.h"

using testing::ElementsAre;
using namespace VexmoraSDK;

namespace {

class VexmoraAdTest : public AppTest {
 protected:
    void listenTo(VexmoraAd* ad) {
        const auto on = [this, ad](auto signal, const char* event) {
            QObject::connect(ad, signal, ad, [events = events_, event] { events->add(event); });
        };
        on(&VexmoraAd::didReceiveAd, "received");
        on(&VexmoraAd::becameViewable, "viewable");
        on(&VexmoraAd::willLeaveApplication, "leaves");
        on(&VexmoraAd::didDismissScreen, "dismissed");
    }

    AdServer& server_ = LocalAds::server();
    RecordingOpener opener_;
    Scene scene_;
};

TEST_F(VexmoraAdTest, LetsAPageLayOutANativeAdItself) {
    QFile page(QStringLiteral(VEXMORA_TEST_QML "/NativePage.qml"));
    ASSERT_TRUE(page.open(QFile::ReadOnly));
    auto* card = scene_.add(page.readAll());
    auto* ad = card->property("ad").value<VexmoraAd*>();
    listenTo(ad);
    auto now = std::make_shared<AdSlot::Time>(std::chrono::hours(1000000));
    ad->slot().setClock([now] { return *now; });
    ASSERT_TRUE(waitToHear("received"));
    std::vector<std::string> texts;
    for (const auto* item : card->childItems()) {
        const auto text = item->property("text").toString().toStdString();
        if (item->isVisible() && !text.empty()) texts.push_back(text);
    }
    EXPECT_THAT(texts, ElementsAre("Title", "What it is about. Advertiser"));
    // 160 × 120, and so 4 : 3 like the ad's picture.
    EXPECT_EQ(scene_.colorAt(5, 60), Qt::red);
    EXPECT_EQ(scene_.colorAt(155, 60), Qt::blue);

    card->setX(-200);
    EXPECT_TRUE(App::waitFor([&] { return ad->slot().visibleFraction() < 0.5; }));
    *now += std::chrono::seconds(5);
    card->setX(0);
    EXPECT_TRUE(App::waitFor([&] { return ad->slot().visibleFraction() == 1; }));
    *now += std::chrono::seconds(1);
    ad->slot().wake();
    scene_.click({250, 100});
    ASSERT_TRUE(waitToHear("leaves"));
    EXPECT_THAT(heard(), ElementsAre("received", "viewable", "leaves"));
    EXPECT_EQ(opener_.opened().size(), 1U);
}

TEST_F(VexmoraAdTest, IsPresentedWithoutAnItem) {
    auto* screen = scene_.add<VexmoraScreenItem>("VexmoraScreen { width: 200; height: 300 }");
    VexmoraAd ad;
    ad.setFillMode(Vexmora::FillMode::Fit);
    listenTo(&ad);
    EXPECT_FALSE(screen->present(&ad));
    ad.setContainerId(QStringLiteral("home"));
    ad.setAdSize(QStringLiteral("300x250"));
    ASSERT_TRUE(waitToHear("received"));
    ASSERT_TRUE(screen->present(&ad));
    EXPECT_TRUE(App::waitFor([&] { return scene_.colorAt(2, 150) == Qt::red; }));
    EXPECT_EQ(scene_.colorAt(198, 150), Qt::blue);
    EXPECT_NE(scene_.colorAt(2, 40), Qt::red) << "as much as fits";
    auto* const dialog = QAccessible::queryAccessibleInterface(screen);
    EXPECT_EQ(dialog->role(), QAccessible::Dialog);
    EXPECT_EQ(dialog->text(QAccessible::Name), QLatin1String("Advertisement"));
    EXPECT_EQ(screen->closeLabel(), QLatin1String("Close advertisement"));

    const auto folder = platform::Bundle::shippedLibraryFolder() / "translations";
    for (const char* language : {"ar", "de", "es", "fr", "ja"}) {
        QTranslator words;
        ASSERT_TRUE(words.load(QLocale(QLatin1String(language)), QStringLiteral("vexmorasdk"),
                               QStringLiteral("_"), QString::fromStdString(folder.string())));
        QCoreApplication::installTranslator(&words);
        EXPECT_NE(screen->closeLabel(), QLatin1String("Close advertisement")) << language;
    }
    screen->close();
    EXPECT_TRUE(waitToHear("dismissed"));
}

TEST_F(VexmoraAdTest, WatchesThePictureThatShowsIt) {
    VexmoraAd first;
    VexmoraAd second;
    VexmoraAdPicture picture;
    picture.setAd(&first);
    EXPECT_EQ(first.item(), &picture);
    picture.setAd(&second);
    EXPECT_EQ(first.item(), nullptr);
    EXPECT_EQ(second.item(), &picture);
}

TEST_F(VexmoraAdTest, LeavesToThePageWhatItTellsScreenReaders) {
    auto* ad = scene_.add<VexmoraAdItem>(R"(VexmoraAdView {
        containerId: 'home'; adSize: '320x60'
        Accessible.name: 'Ours'; Accessible.description: 'Words'
    })");
    listenTo(ad->ad());
    ASSERT_TRUE(waitToHear("received"));
    auto* const link = QAccessible::queryAccessibleInterface(ad);
    EXPECT_EQ(link->text(QAccessible::Name), QLatin1String("Ours"));
    EXPECT_EQ(link->role(), QAccessible::Link);
    link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(waitToHear("leaves"));
}

TEST_F(VexmoraAdTest, IsSeenInAWidgetThatPaintsItsScene) {
    QQuickWidget widget;
    widget.resize(400, 300);
    auto* const ad = new VexmoraAdItem(widget.quickWindow()->contentItem());
    const auto waitForVisible = [ad](double fraction) {
        return App::waitFor([&] { return ad->ad()->slot().visibleFraction() == fraction; });
    };
    listenTo(ad->ad());
    ad->setContainerId(QStringLiteral("home"));
    ad->setAdSize(QStringLiteral("320x60"));
    ASSERT_TRUE(waitToHear("received"));
    EXPECT_EQ(ad->ad()->slot().visibleFraction(), 0);
    widget.show();
    EXPECT_TRUE(waitForVisible(1));
    widget.hide();
    EXPECT_TRUE(waitForVisible(0));
}

TEST_F(VexmoraAdTest, WarnsOnceOfASizeThatNoAdHas) {
    static int warnings;
    warnings = 0;
    const auto former =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) {
            warnings += message.contains(QLatin1String("\"320x50\""));
        });
    auto* item = scene_.add("VexmoraAdView { containerId: 'unasked'; adSize: '320x50' }");
    item->setProperty("adSize", QStringLiteral("320x50"));
    item->setProperty("adSize", QStringLiteral("320x60"));
    qInstallMessageHandler(former);
    EXPECT_EQ(warnings, 1);
}

}  // namespace
