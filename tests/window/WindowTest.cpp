#include <QtCore/QProcess>

#include "VexmoraSDK/quick/VexmoraScreen.h"
#include "tests/qt/RecordingOpener.h"
#include "tests/qt/quick/LocalAds.h"
#include "tests/qt/quick/Scene.h"

using testing::ElementsAre;
using VexmoraSDK::App;
using VexmoraSDK::AppTest;
using VexmoraSDK::LocalAds;
using VexmoraSDK::RecordingOpener;
using VexmoraSDK::Scene;
using VexmoraSDK::VexmoraAdView;
using VexmoraSDK::VexmoraScreen;

namespace {

/// A window on a real display, with a mouse that somebody else moves.
class WindowTest : public AppTest {
 protected:
    VexmoraAdView* addDrawn(const QByteArray& properties) {
        auto* ad =
            scene_.add<VexmoraAdView>("VexmoraAdView { containerId: 'home'; " + properties + "}");
        bool received = false;
        QObject::connect(ad, &VexmoraAdView::didReceiveAd, ad, [&] { received = true; });
        EXPECT_TRUE(App::waitFor([&] { return received; }));
        QObject::disconnect(ad, &VexmoraAdView::didReceiveAd, ad, nullptr);
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
    const auto* ad = addDrawn("viewType: Vexmora.ViewType.Native; x: 20; y: 30");
    QString address;
    QObject::connect(ad, &VexmoraAdView::willLeaveApplication,
                     [&](const QString& url) { address = url; });
    ASSERT_TRUE(waitForColor({25, 80}, Qt::red));
    click({200, 50});
    ASSERT_TRUE(App::waitFor([&] { return !address.isEmpty(); }));
    EXPECT_EQ(address.toStdString(), landing_ + "native");
    EXPECT_THAT(opener_.opened(), ElementsAre(landing_ + "native"));
}

TEST_F(WindowTest, TakesTheInterstitialAdAwayWhenItsCloseButtonIsClicked) {
    auto* screen = scene_.add<VexmoraScreen>("VexmoraScreen { width: 400; height: 300 }");
    auto* ad = addDrawn("adType: Vexmora.AdType.MediumRectangle");
    bool gone = false;
    QObject::connect(ad, &VexmoraAdView::didDismissScreen, ad, [&] { gone = true; });
    ASSERT_TRUE(screen->present(ad));
    ASSERT_TRUE(waitForColor({60, 26}, Qt::red));
    click(screen->closeRect().center().toPoint());
    ASSERT_TRUE(App::waitFor([&] { return gone; }));
    EXPECT_TRUE(waitForColor({60, 150}, Qt::white));
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
