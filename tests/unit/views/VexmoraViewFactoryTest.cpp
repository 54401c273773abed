// SPDX-License-Identifier: MIT
#include "VexmoraSDK/views/VexmoraViewFactory.h"

#include "VexmoraSDK/views/VexmoraBannerView.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"
#include "VexmoraSDK/views/VexmoraNativeView.h"
#include "tests/fake_platform/FakeTextLayout.h"
#include "tests/unit/views/AdViewTest.h"

namespace VexmoraSDK {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class VexmoraViewFactoryTest : public AdViewTest {
 protected:
    /// Expects that `view` is a `View` with the host's delegate, and that exactly one request, for
    /// these types and the container "home", is under way.
    template <class View>
    void expect(const std::shared_ptr<VexmoraView>& view, const std::string& types) {
        ASSERT_TRUE(std::dynamic_pointer_cast<View>(view)) << types;
        EXPECT_EQ(view->delegate(), host_);
        EXPECT_EQ(view->containerId(), "home");
        EXPECT_EQ(view->superview(), nullptr);
        EXPECT_THAT(requests(), ElementsAre(adUrl("home", types)));
        platform::FakeUrlSession::reset();
    }

    std::shared_ptr<VexmoraView> create(const auto& what) const {
        return VexmoraViewFactory::createView("home", what, host_);
    }

    const std::shared_ptr<VexmoraDelegate> host_ = host();
};

TEST_F(VexmoraViewFactoryTest, MakesTheViewOfASize) {
    expect<VexmoraInterstitialView>(create("300x250"), "14");
    expect<VexmoraInterstitialView>(create("728x90"), "15");
    expect<VexmoraBannerView>(create("320x60"), "77");
    expect<VexmoraBannerView>(create("320x100"), "83");
    expect<VexmoraBannerView>(create("468x60"), "84");
}

TEST_F(VexmoraViewFactoryTest, PreparesForTextsOnlyWhereAdsHaveSome) {
    const int before = platform::FakeTextLayout::preparationCount();
    create(VexmoraViewType::banner);
    EXPECT_EQ(platform::FakeTextLayout::preparationCount(), before);
    create(VexmoraViewType::native);
    create(VexmoraViewType::interstitial);
    EXPECT_EQ(platform::FakeTextLayout::preparationCount(), before + 2);
}

TEST_F(VexmoraViewFactoryTest, RefusesAnUnknownSizeSilently) {
    for (const auto* size : {"", "320X60", "320x50"})
        EXPECT_FALSE(create(size)) << size;
    EXPECT_THAT(requests(), IsEmpty());
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(VexmoraViewFactoryTest, MakesAViewOfAKindForAllItsAdTypes) {
    expect<VexmoraBannerView>(create(VexmoraViewType::banner), "77,83,84");
    expect<VexmoraInterstitialView>(create(VexmoraViewType::interstitial), "15,14");
    expect<VexmoraNativeView>(create(VexmoraViewType::native), "1");
    expect<VexmoraBannerView>(create(static_cast<VexmoraViewType>(0)), "77,83,84");
    expect<VexmoraBannerView>(create(static_cast<VexmoraViewType>(7)), "77,83,84");
}

TEST_F(VexmoraViewFactoryTest, MakesTheViewOfAnAdType) {
    expect<VexmoraNativeView>(create(VexmoraAdType::native), "1");
    expect<VexmoraInterstitialView>(create(VexmoraAdType::mediumRectangle), "14");
    expect<VexmoraInterstitialView>(create(VexmoraAdType::leaderboard), "15");
    expect<VexmoraBannerView>(create(VexmoraAdType::banner), "77");
    expect<VexmoraBannerView>(create(VexmoraAdType::mediumBanner), "83");
    expect<VexmoraBannerView>(create(VexmoraAdType::fullBanner), "84");
}

TEST_F(VexmoraViewFactoryTest, ReportsAnAdTypeThatNoViewShowsOnAViewMadeForThat) {
    const auto delegate = std::make_shared<VexmoraDelegate>();
    delegate->didHaveError = [this](VexmoraView& view, const VexmoraError& error) {
        hear("error " + std::to_string(error.code()) + " in " + error.domain());
        EXPECT_EQ(error.userInfo(), std::nullopt);
        EXPECT_EQ(view.viewType(), VexmoraViewType::banner);
        EXPECT_EQ(view.containerId(), std::nullopt);
        EXPECT_THAT(view.adTypes(), ElementsAre(77, 83, 84));
    };
    for (const auto adType : {VexmoraAdType::slideshow, static_cast<VexmoraAdType>(2)}) {
        EXPECT_FALSE(VexmoraViewFactory::createView("home", adType, delegate));
        EXPECT_THAT(heard(), ElementsAre("error 4 in Vexmora"));
        EXPECT_FALSE(
            VexmoraViewFactory::createView("home", adType, std::make_shared<VexmoraDelegate>()));
        EXPECT_FALSE(VexmoraViewFactory::createView("home", adType));
    }
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(VexmoraViewFactoryTest, NeedsNoDelegate) {
    const auto view = VexmoraViewFactory::createView("home", VexmoraAdType::banner);
    ASSERT_TRUE(view);
    EXPECT_EQ(view->delegate(), nullptr);
    EXPECT_THAT(requests(), ElementsAre(adUrl("home", "77")));
    EXPECT_TRUE(VexmoraViewFactory::createView("home", "320x60", nullptr));
    EXPECT_TRUE(VexmoraViewFactory::createView("home", VexmoraViewType::native, nullptr));
}

}  // namespace
}  // namespace VexmoraSDK
