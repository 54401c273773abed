#include "VexmoraSDK/platform/qt/ViewPainter.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <cstring>

#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/platform/ui/TextView.h"
#include "tests/qt/AppTest.h"

using VexmoraSDK::AppTest;
using namespace VexmoraSDK::platform;

namespace {

constexpr Color kRed = {1, 0, 0, 1};
constexpr Color kGreen = {0, 1, 0, 1};
constexpr Color kBlue = {0, 0, 1, 1};

std::shared_ptr<const Image> picture(const QImage& image) {
    const auto count = static_cast<std::size_t>(image.width() * image.height());
    auto pixels = std::make_unique<std::uint32_t[]>(count);
    std::memcpy(pixels.get(), image.constBits(), count * 4);
    return std::make_shared<const Image>(image.width(), image.height(), std::move(pixels), true);
}

QImage plain(int width, int height, Qt::GlobalColor color) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

class ViewPainterTest : public AppTest {
 protected:
    std::shared_ptr<View> addView(Rect frame, Color color) {
        auto view = View::create(frame);
        view->setBackgroundColor(color);
        root_->addSubview(view);
        return view;
    }

    std::shared_ptr<TextView> addText(Rect frame, std::string text) {
        auto view = TextView::create(frame);
        view->setText(std::move(text));
        root_->addSubview(view);
        return view;
    }

    /// The tree as it is seen on white, with `scale` pixels to the point.
    QImage painted(int scale = 1) const {
        QImage image(200 * scale, 100 * scale, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::white);
        QPainter painter(&image);
        paintView(painter, *root_);
        return image;
    }

    QColor colorAt(int x, int y) const { return painted().pixelColor(x, y); }

    /// The smallest rectangle around all that is not white.
    static QRect ink(const QImage& image) {
        QRect rect;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) != Qt::white) rect |= QRect(x, y, 1, 1);
            }
        }
        return rect;
    }

    QRect ink() const { return ink(painted()); }

    const std::shared_ptr<View> root_ = View::create({{30, 40}, {200, 100}});
};

TEST_F(ViewPainterTest, PaintsSubviewsOverTheirSuperviewAtTheirFrames) {
    const auto below = addView({{10, 10}, {50, 50}}, kRed);
    addView({{40, 40}, {50, 50}}, kBlue);
    const auto within = View::create({{5, 5}, {10, 10}});
    within->setBackgroundColor(kGreen);
    below->addSubview(within);

    EXPECT_EQ(ink(), QRect(10, 10, 80, 80));
    EXPECT_EQ(colorAt(12, 12), Qt::red);
    EXPECT_EQ(colorAt(15, 15), Qt::green);
    EXPECT_EQ(colorAt(50, 50), Qt::blue);

    below->setZPosition(1);
    EXPECT_EQ(colorAt(50, 50), Qt::red);
    below->setHidden(true);
    EXPECT_EQ(ink(), QRect(40, 40, 50, 50));
    root_->setHidden(true);
    EXPECT_TRUE(ink().isNull());
}

TEST_F(ViewPainterTest, MixesColorsThatAreSeenThroughAndRoundsCorners) {
    const auto view = addView({{0, 0}, {40, 40}}, {1, 0, 0, 0.5});
    EXPECT_NEAR(colorAt(20, 20).green(), 128, 2);
    view->setCornerRadius(20);
    EXPECT_EQ(colorAt(2, 2), Qt::white);
    EXPECT_NEAR(colorAt(20, 20).green(), 128, 2);
}

TEST_F(ViewPainterTest, PaintsPicturesAsTheirModeSays) {
    const auto view = ImageView::create(picture(plain(20, 10, Qt::red)));
    root_->addSubview(view);
    EXPECT_EQ(ink(), QRect(0, 0, 20, 10));

    view->setFrame({{10, 20}, {80, 60}});
    EXPECT_EQ(ink(), QRect(10, 20, 80, 60));
    view->setContentMode(ContentMode::scaleAspectFit);
    EXPECT_EQ(ink(), QRect(10, 30, 80, 40));
    view->setContentMode(ContentMode::center);
    EXPECT_EQ(ink(), QRect(40, 45, 20, 10));
    view->setFrame({{10, 20}, {4, 4}});
    EXPECT_EQ(ink(), QRect(2, 17, 20, 10)) << "not clipped";
    view->setContentMode(ContentMode::scaleAspectFit);
    view->setFrame({{0, 0}, {80, 20}});
    EXPECT_EQ(ink(), QRect(20, 0, 40, 20));
}

TEST_F(ViewPainterTest, AveragesThePixelsOfReducedPictures) {
    // Green with one column in eight, the first, blue.
    auto stripes = plain(800, 400, Qt::green);
    for (int x = 0; x < 800; x += 8)
        QPainter(&stripes).fillRect(x, 0, 1, 400, Qt::blue);
    const auto view = ImageView::create(picture(stripes));
    view->setFrame({{0, 0}, {100, 50}});
    root_->addSubview(view);
    EXPECT_NEAR(colorAt(50, 25).blue(), 255 / 8, 8);
    EXPECT_NEAR(colorAt(51, 25).blue(), 255 / 8, 8);
    EXPECT_NEAR(painted(2).pixelColor(100, 50).blue(), 255 / 4, 8);
    EXPECT_NEAR(colorAt(50, 25).blue(), 255 / 8, 8);
}

TEST_F(ViewPainterTest, PaintsTextWhereItIsMeasured) {
    const auto view = addText({{20, 10}, {100, 80}}, "Coffee\nfrom the harbour");
    view->setTextColor(kRed);
    view->sizeToFit();
    const auto [width, height] = view->frame().size;
    const QRect found = ink();
    // 5 points of padding at the sides, 8 of inset above and below.
    EXPECT_TRUE(QRectF(24, 18, width - 8, height - 16).contains(found));
    EXPECT_GT(found.height(), 20) << "two lines";
    EXPECT_GT(found.width(), width - 20) << "as wide as measured";
    const QImage large = painted(3);
    int red = 0;
    for (int y = 0; y < large.height(); ++y) {
        for (int x = 0; x < large.width(); ++x) {
            const QColor color = large.pixelColor(x, y);
            EXPECT_EQ(color.red(), 255);
            EXPECT_EQ(color.green(), color.blue());
            red += color == Qt::red;
        }
    }
    EXPECT_GT(red, 20) << "the stems of the letters";

    view->setFrame({{20, 10}, {60, 15}});
    EXPECT_TRUE(QRect(20, 10, 60, 15).contains(ink())) << "clipped";
    EXPECT_FALSE(ink().isNull());
}

TEST_F(ViewPainterTest, BeginsRightToLeftScriptsAtTheRight) {
    const auto view = addText({{0, 0}, {200, 40}}, "Kahvi");
    EXPECT_LT(ink().right(), 100);
    view->setText("קפה");
    EXPECT_GT(ink().left(), 100);
}

TEST_F(ViewPainterTest, PaintsTheSameLinesAtAnyScale) {
    addText({{0, 0}, {120, 100}}, "Roasted at dawn, at your door by noon, from the harbour");
    const QRect once = ink();
    for (const int scale : {2, 3}) {
        const QRect scaled = ink(painted(scale));
        EXPECT_NEAR(scaled.width(), once.width() * scale, 3 * scale);
        EXPECT_NEAR(scaled.height(), once.height() * scale, 3 * scale);
    }
}

TEST_F(ViewPainterTest, PutsTheTitleOfAButtonInItsMiddle) {
    const auto button = Button::create({{50, 20}, {60, 40}});
    button->setTitle("×");
    root_->addSubview(button);
    EXPECT_NEAR(ink().center().x(), 80, 1);
    EXPECT_NEAR(ink().center().y(), 40, 5);
    button->setTitle("סגור");
    EXPECT_NEAR(ink().center().x(), 80, 1);
}

TEST(ViewPainterDeathTest, PaintsATextUnderTheNextApplication) {
    const auto test = [] {
        auto app = std::make_unique<VexmoraSDK::App>();
        const auto text = TextView::create({{0, 0}, {200, 100}});
        text->setText("Coffee");
        const auto painted = [&] {
            QImage image(200, 100, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            paintView(painter, *text);
            return image;
        };
        const QImage before = painted();
        app.reset();
        app = std::make_unique<VexmoraSDK::App>();
        const bool same = painted() == before && before.pixelColor(0, 0) == Qt::white;
        app.reset();
        std::exit(same ? 0 : 1);
    };
    EXPECT_EXIT(test(), testing::ExitedWithCode(0), "");
}

}  // namespace
