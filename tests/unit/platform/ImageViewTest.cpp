#include "VexmoraSDK/platform/ImageView.h"

#include <gmock/gmock.h>

#include "tests/unit/Printing.h"

namespace VexmoraSDK::platform {
namespace {

TEST(ImageViewTest, LaysItsPictureOutByItsMode) {
    const auto view = ImageView::create(Image::fromData(dataOf("fake-image 40x20")));
    EXPECT_EQ(view->frame(), (Rect{{0, 0}, {40, 20}}));

    view->setFrame({{5, 5}, {100, 100}});
    EXPECT_EQ(view->imageRect(), (Rect{{0, 0}, {100, 100}}));
    view->setContentMode(ContentMode::scaleAspectFit);
    EXPECT_EQ(view->imageRect(), (Rect{{0, 25}, {100, 50}}));
    view->setFrame({{5, 5}, {100, 10}});
    EXPECT_EQ(view->imageRect(), (Rect{{40, 0}, {20, 10}}));
    view->setContentMode(ContentMode::center);
    EXPECT_EQ(view->imageRect(), (Rect{{30, -5}, {40, 20}}));
}

TEST(ImageViewTest, MayHaveNoPicture) {
    const auto view = ImageView::create(nullptr);
    EXPECT_EQ(view->frame(), Rect());
    view->setContentMode(ContentMode::scaleAspectFit);
    EXPECT_EQ(view->imageRect().size, Size());
}

}  // namespace
}  // namespace VexmoraSDK::platform
