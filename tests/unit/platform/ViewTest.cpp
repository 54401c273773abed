#include "VexmoraSDK/platform/View.h"

#include <gmock/gmock.h>

#include "VexmoraSDK/platform/ImageView.h"
#include "tests/fake_platform/FakeMainQueue.h"
#include "tests/unit/Printing.h"
#include "tests/unit/platform/Listener.h"

namespace VexmoraSDK::platform {
namespace {

using testing::ElementsAre;

class ViewTest : public testing::Test {
 protected:
    ViewTest() { FakeMainQueue::start(); }
    ~ViewTest() override { FakeMainQueue::stop(); }

    static std::shared_ptr<View> addView(View& superview, Rect frame) {
        auto view = View::create(frame);
        superview.addSubview(view);
        return view;
    }

    /// From now on taps on the view count.
    void countTaps(View& view) {
        view.addGestureRecognizer(std::make_shared<TapGestureRecognizer>(counter_, "hear:"));
    }

    int taps_ = 0;
    std::shared_ptr<View> root_ = View::create({{0, 0}, {100, 100}});

 private:
    std::shared_ptr<Listener> counter_ = std::make_shared<Listener>([this](Object*) { ++taps_; });
};

TEST_F(ViewTest, MovesItsFrameWithItsCenter) {
    root_->setFrame({{10, 20}, {30, 50}});
    EXPECT_EQ(root_->center(), (Point{25, 45}));
    root_->setCenter({0, 0});
    EXPECT_EQ(root_->frame(), (Rect{{-15, -25}, {30, 50}}));
}

TEST_F(ViewTest, HasOneSuperviewAtATimeAndIsItsFrontmostView) {
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

class Adder : public View {
 public:
    using View::View;
    std::vector<View*> added;

    Size sizeThatFits(Size proposed) override { return {proposed.width / 2, 7}; }

 protected:
    void didAddSubview(View& subview) override {
        EXPECT_EQ(subview.superview().get(), this);
        added.push_back(&subview);
    }
};

TEST_F(ViewTest, SaysWhichViewWasAddedEachTime) {
    const auto adder = makeSharedOnMain<Adder>(Rect());
    const auto view = addView(*adder, {});
    adder->addSubview(view);
    EXPECT_THAT(adder->added, ElementsAre(view.get(), view.get()));
}

TEST_F(ViewTest, TakesTheSizeThatFitsWhereItIs) {
    const auto view = makeSharedOnMain<Adder>(Rect{{3, 4}, {10, 10}});
    view->sizeToFit();
    EXPECT_EQ(view->frame(), (Rect{{3, 4}, {5, 7}}));
    root_->sizeToFit();
    EXPECT_EQ(root_->frame(), (Rect{{0, 0}, {100, 100}}));
}

TEST_F(ViewTest, FindsTheDeepestAndFrontmostViewUnderAPoint) {
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
}

TEST_F(ViewTest, LooksThroughImageViews) {
    const auto picture = ImageView::create(Image::fromData(dataOf("fake-image 50x50")));
    root_->addSubview(picture);
    addView(*picture, {{0, 0}, {50, 50}});
    EXPECT_EQ(root_->hitTest({10, 10}), root_);
}

TEST_F(ViewTest, FiresOneRecognizerOfTheDeepestViewThatHasAny) {
    const auto view = addView(*root_, {{10, 10}, {50, 50}});
    addView(*view, {{0, 0}, {50, 50}});
    EXPECT_FALSE(root_->tap({20, 20}));
    countTaps(*view);
    countTaps(*view);
    countTaps(*root_);
    EXPECT_TRUE(root_->tap({20, 20}));
    EXPECT_EQ(taps_, 1);
    EXPECT_TRUE(root_->tap({90, 90}));
    EXPECT_EQ(taps_, 2);
    EXPECT_FALSE(root_->tap({110, 20}));
    EXPECT_EQ(taps_, 2);
}

TEST_F(ViewTest, MayBeReleasedByTheTapOnIt) {
    const auto releaser = std::make_shared<Listener>([this](Object*) { root_.reset(); });
    const auto view = addView(*root_, {{0, 0}, {50, 50}});
    view->addGestureRecognizer(std::make_shared<TapGestureRecognizer>(releaser, "hear:"));
    EXPECT_TRUE(root_->tap({20, 20}));
    EXPECT_EQ(root_, nullptr);
}

TEST_F(ViewTest, TellsThePresenterOfTheTreeThatSomethingIsToBePainted) {
    int calls = 0;
    const auto painted = [&calls] { return std::exchange(calls, 0) > 0; };
    root_->setDisplayCallback([&calls] { ++calls; });
    const auto view = addView(*root_, {});
    EXPECT_TRUE(painted());
    const auto deep = addView(*view, {});
    EXPECT_TRUE(painted());
    deep->setFrame({{1, 2}, {3, 4}});
    EXPECT_TRUE(painted());
    deep->setHidden(true);
    EXPECT_TRUE(painted());
    deep->setBackgroundColor(Color::gray());
    EXPECT_TRUE(painted());
    deep->removeFromSuperview();
    EXPECT_TRUE(painted());
    deep->setNeedsDisplay();
    EXPECT_FALSE(painted());
}

}  // namespace
}  // namespace VexmoraSDK::platform
