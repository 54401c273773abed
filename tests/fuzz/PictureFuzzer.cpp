// Decodes pictures and paints them.
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include "VexmoraSDK/platform/qt/ViewPainter.h"
#include "VexmoraSDK/platform/ui/ImageView.h"
#include "tests/fuzz/Fuzzing.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto& app = *new QGuiApplication(*argc, *argv);
    static_cast<void>(app);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace VexmoraSDK;
    using namespace VexmoraSDK::platform;
    auto image = Image::fromData(VexmoraSDK::dataOf(bytes, size));
    if (!image) return 0;
    const auto [width, height] = image->size();
    check(width >= 1 && height >= 1 && width * height <= 16'000'000, "a size out of bounds");

    QImage screen(64, 64, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&screen);
    const auto view = ImageView::create(std::move(image));
    for (const auto mode :
         {ContentMode::scaleToFill, ContentMode::scaleAspectFit, ContentMode::center}) {
        view->setContentMode(mode);
        paintView(painter, *view);
        view->setFrame({{8, 8}, {48, 24}});
    }
    return 0;
}
