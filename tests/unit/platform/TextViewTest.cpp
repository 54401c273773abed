#include "VexmoraSDK/platform/TextView.h"

#include <gmock/gmock.h>

#include "tests/fake_platform/FakeTextLayout.h"
#include "tests/unit/Printing.h"

namespace VexmoraSDK::platform {
namespace {

/// The default rule: in 12 points every byte is 6 wide, every line 12 high.
class TextViewTest : public testing::Test {
 protected:
    ~TextViewTest() override { FakeTextLayout::measureBy(FakeTextLayout::measureByBytes); }

    const std::shared_ptr<TextView> view_ = TextView::create({{0, 0}, {70, 20}});
};

TEST_F(TextViewTest, NeedsRoomForTheTextItsInsetAndThePaddingOfLines) {
    view_->setText("1234567890");
    EXPECT_EQ(view_->sizeThatFits({70, 0}), (Size{70, 28}));
    EXPECT_EQ(view_->sizeThatFits({69, 0}), (Size{64, 40}));
    EXPECT_EQ(view_->layoutOrigin(), (Point{5, 8}));
    view_->setTextContainerInset({1, 2, 3, 4});
    EXPECT_EQ(view_->sizeThatFits({76, 0}), (Size{76, 16}));
    EXPECT_EQ(view_->layoutOrigin(), (Point{7, 1}));
}

TEST_F(TextViewTest, MeasuresItsContentInTheWidthTextAndFontThatItHas) {
    view_->setText("1234567890");
    EXPECT_EQ(view_->contentSize(), (Size{70, 28}));
    view_->setFrame({{0, 0}, {40, 20}});
    EXPECT_EQ(view_->contentSize(), (Size{40, 40}));
    view_->setText("12345");
    EXPECT_EQ(view_->contentSize(), (Size{40, 28}));
    view_->setFont(Font::named("Times", 20));
    EXPECT_EQ(view_->contentSize(), (Size{40, 56}));
    view_->setText(std::nullopt);
    EXPECT_EQ(view_->contentSize(), (Size{10, 36}));
}

TEST_F(TextViewTest, LaysOutInTheSystemFontUntilItIsGivenOne) {
    std::optional<Font> used;
    FakeTextLayout::measureBy([&used](const std::string&, const Font& font, double) {
        used = font;
        return Size();
    });
    view_->layout();
    EXPECT_EQ(used, Font::system(12));
    view_->setFont(Font::named("Helvetica-Bold", 13));
    view_->layout();
    EXPECT_EQ(used, Font::named("Helvetica-Bold", 13));
    view_->setFont(std::nullopt);
    view_->layout();
    EXPECT_EQ(used, Font::system(12));
}

TEST_F(TextViewTest, NarrowerThanItsPaddingItLaysOutInNoNegativeWidth) {
    double least = 1;
    FakeTextLayout::measureBy([&least](const std::string&, const Font&, double width) {
        least = std::min(least, width);
        return Size();
    });
    view_->sizeThatFits({0, 0});
    EXPECT_EQ(least, 0);
}

}  // namespace
}  // namespace VexmoraSDK::platform
