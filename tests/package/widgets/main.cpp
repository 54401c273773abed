// SPDX-License-Identifier: MIT
#include <QtWidgets/QApplication>
#include <cstdio>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/widgets/VexmoraWidget.h"

using namespace VexmoraSDK;

// Exits when the ad is there, with 0 if it is painted.
int main(int argc, char** argv) {
    QApplication app(argc, argv);
    VexmoraWidget banner;
    auto delegate = std::make_shared<VexmoraDelegate>();
    delegate->didReceiveAd = [&banner](VexmoraView&) {
        banner.resize(320, 60);
        const QImage picture = banner.grab().toImage();
        const bool painted = picture.pixel(20, 30) != picture.pixel(300, 30);
        QApplication::exit(painted ? 0 : 1);
    };
    delegate->didHaveError = [](VexmoraView&, const VexmoraError& error) {
        std::printf("error %td\n", error.code());
        std::_Exit(1);
    };
    banner.setView(VexmoraViewFactory::createView("home-bottom", "320x60", delegate));
    banner.show();
    return QApplication::exec();
}
