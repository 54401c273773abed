// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/ui/View.h"

#include <gmock/gmock.h>

#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/platform/ui/TapGestureRecognizer.h"
#include "VexmoraSDK/platform/ui/TextView.h"
#include "tests/PlainPicture.h"
#include "tests/fake_platform/FakeMainQueue.h"
#include "tests/unit/foundation/Listener.h"

namespace VexmoraSDK::platform {
namespace {

using testing::ElementsAre;

class ViewTest : public testing::Test {
 protected:
    ViewTest() { FakeMainQueue::start(); }

    static std::shared_ptr<View> addView(View& superview, Rect frame) {
        auto view = View::create(frame);
        superview.addSubview(view);
        return view;
    }

    /// From now on a tap on the view runs `action`.
    void onTap(View& view, Listener::Action action) {
        listeners_.push_back(std::make_shared<Listener>(std::move(action)));
        view.addGestureRecognizer(
            std::make_shared<TapGestureRecognizer>(listeners_.back(), "hear:"));
    }

    std::shared_ptr<View> root_ = View::create({{0, 0}, {100, 100}});

 private:
    std::vector<std::shared_ptr<Listener>> listeners_;
};

TEST_F(ViewTest, HasOneSuperviewAndIsAddedAsItsFrontmostSubview) {
    const auto other = View::create();
    const auto first = addView(*root_, {});
    const auto second = addView(*root_, {});
    root_->addSubview(first);
    EXPECT_THAT(root_->subviews(), ElementsAre(second, first));
    other->addSubview(first);
    EXPECT_THAT(root_->subviews(), ElementsAre(second));
    EXPECT_EQ(first->superview(), other);
    second->removeFromSuperview();
    EXPECT_TRUE(root_->subviews().empty());
    EXPECT_EQ(second->superview(), nullptr);
    root_->addSubview(second);
    root_.reset();
    EXPECT_EQ(second->superview(), nullptr);
}

TEST_F(ViewTest, HitTestsTheDeepestFrontmostViewAndLooksThroughPictures) {
    const auto rear = addView(*root_, {{10, 10}, {50, 50}});
    const auto front = addView(*root_, {{40, 40}, {50, 50}});
    const auto deep = addView(*rear, {{20, 20}, {10, 10}});
    EXPECT_EQ(root_->hitTest({5, 5}), root_);
    EXPECT_EQ(root_->hitTest({15, 15}), rear);
    EXPECT_EQ(root_->hitTest({35, 35}), deep);
    EXPECT_EQ(root_->hitTest({45, 45}), front);
    EXPECT_EQ(root_->hitTest({105, 50}), nullptr);
    front->setHidden(true);
    EXPECT_EQ(root_->hitTest({45, 45}), rear);

    const auto picture =
        ImageView::create(Image::fromData(dataOf(VexmoraSDK::plainPicture(50, 50))));
    root_->addSubview(picture);
    addView(*picture, {{0, 0}, {50, 50}});
    EXPECT_EQ(root_->hitTest({45, 45}), rear);
}

TEST_F(ViewTest, FiresOneRecognizerOfTheDeepestViewThatHasAny) {
    int taps = 0;
    const auto count = [&taps](Object*) { ++taps; };
    const auto view = addView(*root_, {{10, 10}, {50, 50}});
    addView(*view, {{0, 0}, {50, 50}});
    EXPECT_FALSE(root_->tap({20, 20}));
    for (auto* tapped : {view.get(), view.get(), root_.get()})
        onTap(*tapped, count);
    EXPECT_TRUE(root_->tap({20, 20}));
    EXPECT_EQ(taps, 1);
    EXPECT_TRUE(root_->tap({90, 90}));
    EXPECT_EQ(taps, 2);
    EXPECT_FALSE(root_->tap({110, 20}));
    EXPECT_EQ(taps, 2);
}

TEST_F(ViewTest, MayBeReleasedByTheTapOnIt) {
    onTap(*addView(*root_, {{0, 0}, {50, 50}}), [this](Object*) { root_.reset(); });
    EXPECT_TRUE(root_->tap({20, 20}));
    EXPECT_EQ(root_, nullptr);
}

TEST_F(ViewTest, TellsThePresenterOfTheTreeAboutEveryVisibleChange) {
    const auto view = addView(*root_, {});
    const auto deep = View::create();
    const auto text = TextView::create({});
    const auto button = Button::create({});
    const auto picture = ImageView::create(nullptr);
    const std::vector<std::function<void()>> changes = {
        [&] { view->addSubview(deep); },
        [&] {
            deep->setFrame({{1, 2}, {3, 4}});
        },
        [&] { deep->setHidden(true); },
        [&] { deep->setBackgroundColor(Color::gray()); },
        [&] { deep->setCornerRadius(3); },
        [&] { deep->setZPosition(1); },
        [&] { view->addSubview(text); },
        [&] { text->setText("a"); },
        [&] { text->setFont(std::nullopt); },
        [&] { text->setTextColor(Color::gray()); },
        [&] { text->setTextContainerInset({}); },
        [&] { view->addSubview(button); },
        [&] { button->setTitle("a"); },
        [&] { view->addSubview(picture); },
        [&] { picture->setContentMode(ContentMode::center); },
        [&] { deep->removeFromSuperview(); },
    };
    int calls = 0;
    root_->setDisplayCallback([&calls] { ++calls; });
    for (std::size_t i = 0; i < changes.size(); ++i) {
        changes[i]();
        EXPECT_GT(std::exchange(calls, 0), 0) << "change " << i;
    }
    deep->setNeedsDisplay();
    EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace VexmoraSDK::platform
