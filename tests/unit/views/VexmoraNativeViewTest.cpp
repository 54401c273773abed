// SPDX-License-Identifier: MIT
#include "VexmoraSDK/views/VexmoraNativeView.h"

#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/platform/ui/TextView.h"
#include "tests/PlainPicture.h"
#include "tests/fake_platform/FakeTextLayout.h"
#include "tests/unit/views/AdViewTest.h"

namespace VexmoraSDK {
namespace {

using platform::Color;
using platform::ContentMode;
using platform::ImageView;
using platform::Rect;
using platform::Size;
using platform::TextView;
using platform::FakeMainQueue::drain;
using platform::FakeUrlSession::answer;
using testing::ElementsAre;
using testing::IsEmpty;

const char kAds[] = "https://ads.test/?container=home&types=1";

class VexmoraNativeViewTest : public AdViewTest {
 protected:
    VexmoraNativeViewTest() {
        view_->setDelegate(host());
        platform::FakeTextLayout::measureBy([](const auto& text, const auto&, double) {
            return Size{178, text == "Title" ? 20.0 : text == "Words" ? 36.0 : 14.0};
        });
    }

    ~VexmoraNativeViewTest() override {
        platform::FakeTextLayout::measureBy(platform::FakeTextLayout::measureByBytes);
    }

    void receiveAd() {
        view_->setContainerId("home");
        serve(kAds, R"([{"adTypeId":1,"clickUrl":"https://shop.test/a",
            "bannerUrl":"https://cdn.test/a","title":"Title","description":"Words",
            "displayName":"Name"}])");
    }

    void showAd() {
        receiveAd();
        serve("https://cdn.test/a", plainPicture(400, 300));
    }

    std::vector<Rect> frames() const {
        std::vector<Rect> found;
        for (const auto& subview : view_->subviews())
            found.push_back(subview->frame());
        return found;
    }

    TextView& text(std::size_t index) const {
        return dynamic_cast<TextView&>(*view_->subviews().at(index));
    }

    std::shared_ptr<VexmoraNativeView> view_ = VexmoraNativeView::create({{7, 9}, {50, 50}});
};

TEST_F(VexmoraNativeViewTest, StacksItsTextsBesideThePictureAndTakesTheirSize) {
    showAd();
    EXPECT_THAT(heard(), ElementsAre("didReceiveAd"));
    EXPECT_THAT(frames(), ElementsAre(Rect{{0, 0}, {132, 99}}, Rect{{135, 0}, {188, 36}},
                                      Rect{{135, 21}, {188, 52}}, Rect{{135, 58}, {188, 30}}));
    EXPECT_EQ(view_->frame(), (Rect{{7, 9}, {320, 118}}));

    const auto& picture = dynamic_cast<ImageView&>(*view_->subviews().front());
    EXPECT_EQ(picture.contentMode(), ContentMode::scaleAspectFit);
    EXPECT_EQ(text(1).text(), "Title");
    EXPECT_EQ(text(1).font(), platform::Font::named("Helvetica-Bold", 13));
    EXPECT_EQ(text(2).font(), platform::Font::named("Helvetica", 12));
    EXPECT_EQ(text(3).font(), platform::Font::named("Helvetica", 12));
    EXPECT_EQ(text(1).textColor(), Color::black());
    EXPECT_EQ(text(2).textColor(), Color::black());
    EXPECT_EQ(text(3).textColor(), Color::gray());
    EXPECT_FALSE(text(3).isEditable());
    EXPECT_EQ(text(3).textContainerInset(), platform::EdgeInsets());
    EXPECT_EQ(view_->viewType(), VexmoraViewType::native);
}

TEST_F(VexmoraNativeViewTest, StacksASecondAdBelowTheFirst) {
    showAd();
    showAd();
    EXPECT_EQ(frames().size(), 8u);
    EXPECT_EQ(frames().at(5), (Rect{{135, 73}, {188, 36}}));
    EXPECT_EQ(view_->frame().size, (Size{320, 236}));
}

TEST_F(VexmoraNativeViewTest, LaysOutEachTextOnceBeforeThePictureArrives) {
    std::vector<std::string> laidOut;
    platform::FakeTextLayout::measureBy([&](const auto& text, const auto&, double) {
        laidOut.push_back(text);
        return Size{178, 20};
    });
    receiveAd();
    EXPECT_THAT(laidOut, ElementsAre("Title", "Words", "Name"));
    serve("https://cdn.test/a", plainPicture(400, 300));
    EXPECT_EQ(frames().size(), 4u);
    EXPECT_EQ(laidOut.size(), 3u);
}

TEST_F(VexmoraNativeViewTest, IsAsHighAsItsPictureWhereTheTextsAreShort) {
    platform::FakeTextLayout::measureBy([](const auto&, const auto&, double) {
        return Size{40, 5};
    });
    EXPECT_EQ(view_->sizeThatFits({500, 500}), Size());
    showAd();
    EXPECT_EQ(view_->frame().size, (Size{182, 99}));
}

TEST_F(VexmoraNativeViewTest, OpensItsAddressWhereverItIsTapped) {
    showAd();
    heard();
    for (const platform::Point point : {platform::Point{60, 50}, {200, 10}, {200, 60}, {10, 110}}) {
        EXPECT_TRUE(view_->tap(point));
        EXPECT_THAT(heard(), ElementsAre("willLeaveApplication", "opens https://shop.test/a"));
    }
}

TEST_F(VexmoraNativeViewTest, ReportsAnUndecodablePictureAndAMissingAd) {
    receiveAd();
    serve("https://cdn.test/a", "no picture");
    EXPECT_THAT(heard(), ElementsAre("didHaveError 7"));

    receiveAd();
    answer("https://cdn.test/a", plainPicture(400, 300));
    view_->setAd(nullptr);
    drain();
    EXPECT_THAT(heard(), ElementsAre("didHaveError 1"));
    EXPECT_THAT(frames(), IsEmpty());
}

}  // namespace
}  // namespace VexmoraSDK
