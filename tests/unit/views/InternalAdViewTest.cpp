#include "VexmoraSDK/views/InternalAdView.h"

#include "VexmoraSDK/platform/NotificationCenter.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"
#include "VexmoraSDK/views/VexmoraNativeView.h"
#include "tests/unit/views/AdViewTest.h"

namespace VexmoraSDK {
namespace {

using testing::ElementsAre;

class InternalAdViewTest : public AdViewTest {};

TEST_F(InternalAdViewTest, IsOfItsKindAndAllowsTheTypesOfItsKind) {
    const auto native = VexmoraNativeView::create();
    EXPECT_EQ(native->viewType(), VexmoraViewType::native);
    EXPECT_THAT(native->adTypes(), ElementsAre(1));
    EXPECT_THAT(native->allowedAdTypes(), ElementsAre(VexmoraAdType::native));

    const auto interstitial = VexmoraInterstitialView::create();
    EXPECT_EQ(interstitial->viewType(), VexmoraViewType::interstitial);
    EXPECT_THAT(interstitial->adTypes(), ElementsAre(77, 83, 84));
    EXPECT_THAT(rawValues(interstitial->allowedAdTypes()), ElementsAre(15, 14));

    EXPECT_NE(native->vexmoraDelegate(), interstitial->vexmoraDelegate());
}

using InternalAdViewDeathTest = InternalAdViewTest;

TEST_F(InternalAdViewDeathTest, StopsAtATapOnAnInterstitialsPicture) {
    const auto view = VexmoraInterstitialView::create({{0, 0}, {320, 480}});
    view->vexmoraDelegate()->addTapHandler(*view);
    EXPECT_DEATH(view->tap({5, 5}),
                 "^fatal error: unrecognized selector 'handleTap:' sent to instance of "
                 "'VexmoraSDK.VexmoraInterstitialView'\n$");
}

}  // namespace
}  // namespace VexmoraSDK
