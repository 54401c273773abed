// SPDX-License-Identifier: MIT
#include <QtCore/QProcess>

#include "VexmoraSDK/quick/VexmoraScreenItem.h"
#include "tests/LocalAds.h"
#include "tests/RecordingOpener.h"
#include "tests/qt/quick/Scene.h"

using testing::ElementsAre;
using VexmoraSDK::App;
using VexmoraSDK::AppTest;
using VexmoraSDK::LocalAds;
using VexmoraSDK::RecordingOpener;
using VexmoraSDK::Scene;
using VexmoraSDK::VexmoraAdItem;
using VexmoraSDK::VexmoraScreenItem;

namespace {

/// A window on a real display, whose mouse another program moves.
class WindowTest : public AppTest {
 protected:
    VexmoraAdItem* addDrawn(const QByteArray& properties) {
        auto* ad =
            scene_.add<VexmoraAdItem>("VexmoraAdView { containerId: 'home'; " + properties + "}");
        QObject::connect(ad, &VexmoraAdItem::didReceiveAd, ad, [this] { hear("received"); });
        QObject::connect(ad, &VexmoraAdItem::didDismissScreen, ad, [this] { hear("gone"); });
        QObject::connect(ad, &VexmoraAdItem::willLeaveApplication, ad,
                         [this](const QString& url) { hear(url.toStdString()); });
        EXPECT_TRUE(waitToHear("received"));
        return ad;
    }

    void click(QPoint point) {
        const QPoint there = scene_.window().mapToGlobal(point);
        const auto text = [](int number) { return QString::number(number); };
        EXPECT_EQ(QProcess::execute(QStringLiteral("xdotool"),
                                    {QStringLiteral("mousemove"), text(there.x()), text(there.y()),
                                     QStringLiteral("click"), QStringLiteral("1")}),
                  0);
    }

    bool waitForColor(QPoint point, QColor color) {
        return App::waitFor([&] { return scene_.colorAt(point.x(), point.y()) == color; });
    }

    const std::string landing_ = LocalAds::server().address() + "/landing/";
    RecordingOpener opener_;
    Scene scene_;
};

TEST_F(WindowTest, OpensTheAddressOfANativeAdThatIsClicked) {
    addDrawn("viewType: Vexmora.ViewType.Native; x: 20; y: 30");
    ASSERT_TRUE(waitForColor({25, 80}, Qt::red));
    click({200, 50});
    ASSERT_TRUE(waitToHear(landing_ + "native"));
    EXPECT_THAT(opener_.opened(), ElementsAre(landing_ + "native"));
}

TEST_F(WindowTest, TakesTheInterstitialAdAwayWhenItsCloseButtonIsClicked) {
    auto* screen = scene_.add<VexmoraScreenItem>("VexmoraScreen { width: 400; height: 300 }");
    auto* ad = addDrawn("adType: Vexmora.AdType.MediumRectangle");
    ASSERT_TRUE(screen->present(ad));
    ASSERT_TRUE(waitForColor({60, 26}, Qt::red));
    click(screen->closeRect().center().toPoint());
    ASSERT_TRUE(waitToHear("gone"));
    EXPECT_TRUE(waitForColor({60, 150}, Qt::white));
}

}  // namespace
