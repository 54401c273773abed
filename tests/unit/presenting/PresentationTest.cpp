// SPDX-License-Identifier: MIT
#include "VexmoraSDK/presenting/Presentation.h"

#include "VexmoraSDK/platform/ui/Window.h"
#include "tests/unit/SdkTest.h"

namespace VexmoraSDK::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PresentationTest : public SdkTest {
 protected:
    PresentationTest() {
        presentation_->begin(view_);
        controller_ = view_->window()->rootViewController();
    }

    void dismiss(bool animated) {
        controller_->dismiss(animated, [this] { hear("dismissed"); });
    }

    std::vector<std::string> heardInTheEnd() {
        FakeMainQueue::drain();
        return heard();
    }

    const std::shared_ptr<View> view_ = View::create();
    std::unique_ptr<Presentation> presentation_ = std::make_unique<Presentation>(
        [this](bool animated) { hear(animated ? "moves out" : "goes"); });
    std::shared_ptr<ViewController> controller_;
};

TEST_F(PresentationTest, LeavesOnceAndThenCompletesAllDismissalsLater) {
    dismiss(true);
    dismiss(false);
    EXPECT_THAT(heardInTheEnd(), ElementsAre("moves out"));
    EXPECT_TRUE(presentation_->isLeaving());
    presentation_->end();
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_THAT(heardInTheEnd(), ElementsAre("dismissed", "dismissed"));
    EXPECT_FALSE(presentation_->isLeaving() || presentation_->view() || view_->window());
}

TEST_F(PresentationTest, CompletesADismissalOfNothing) {
    presentation_->end();
    dismiss(false);
    EXPECT_THAT(heardInTheEnd(), ElementsAre("dismissed"));
    presentation_.reset();
    dismiss(true);
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_THAT(heardInTheEnd(), ElementsAre("dismissed"));
}

TEST_F(PresentationTest, CompletesADismissalWhenDestroyed) {
    dismiss(true);
    presentation_.reset();
    EXPECT_FALSE(view_->window());
    EXPECT_THAT(heardInTheEnd(), ElementsAre("moves out", "dismissed"));
}

}  // namespace
}  // namespace VexmoraSDK::platform
