// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/ui/TextView.h"

#include <gmock/gmock.h>

#include "tests/fake_platform/FakeTextLayout.h"

namespace VexmoraSDK::platform {
namespace {

/// In the fake layout at 12 points every byte is 6 wide and every line 12 high.
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
    EXPECT_EQ(view_->sizeThatFits({75, 0}), (Size{70, 28}));
    EXPECT_EQ(view_->layoutOrigin(), (Point{7, 1}));
}

TEST_F(TextViewTest, MeasuresItsContentInTheWidthTextAndFontThatItHas) {
    view_->setText("1234567890");
    EXPECT_EQ(view_->contentSize(), (Size{70, 28}));
    view_->setFrame({{0, 0}, {40, 20}});
    EXPECT_EQ(view_->contentSize(), (Size{40, 40}));
    view_->setFont(Font::named("Times", 20));
    EXPECT_EQ(view_->contentSize(), (Size{40, 96}));
    view_->setText(std::nullopt);
    EXPECT_EQ(view_->contentSize(), (Size{10, 36}));
}

TEST_F(TextViewTest, LaysOutInTheSystemFontUntilItIsGivenOneAndInNoNegativeWidth) {
    FakeTextLayout::measureBy([](const std::string&, const Font& font, double width) {
        return font == Font::system(12) ? Size{width, 12} : Size();
    });
    EXPECT_EQ(view_->sizeThatFits({0, 0}), (Size{10, 28}));
    view_->setFont(Font::named("Helvetica-Bold", 13));
    EXPECT_EQ(view_->contentSize(), (Size{10, 16}));
    view_->setFont(std::nullopt);
    EXPECT_EQ(view_->contentSize(), (Size{70, 28}));
}

}  // namespace
}  // namespace VexmoraSDK::platform
