// SPDX-License-Identifier: MIT
// A host that shows a banner if it is given the library's folder. It prints a line when the banner
// is shown, and runs until its input ends.

#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <cstdio>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/platform/qt/ViewPainter.h"

namespace {

void paint(VexmoraSDK::VexmoraView& view) {
    const auto [width, height] = view.frame().size;
    QImage canvas(QSizeF(width, height).toSize(), QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&canvas);
    VexmoraSDK::platform::paintView(painter, view);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 1) return 0;
    const QGuiApplication app(argc, argv);
    VexmoraSDK::platform::Bundle::setLibraryFolder(argv[1]);
    const auto delegate = std::make_shared<VexmoraSDK::VexmoraDelegate>();
    delegate->didReceiveAd = [&](VexmoraSDK::VexmoraView& view) {
        paint(view);
        std::puts("shown");
        std::fflush(stdout);
        std::getchar();
        QGuiApplication::quit();
    };
    const auto view = VexmoraSDK::VexmoraViewFactory::createView("home-bottom", "320x60", delegate);
    return QGuiApplication::exec();
}
