// SPDX-License-Identifier: MIT
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickWindow>
#include <cstdio>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/quick/VexmoraAdItem.h"

using namespace VexmoraSDK;

// Exits when the ad is there, with 0 if it has the right size.
int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    QQuickWindow window;
    auto delegate = std::make_shared<VexmoraDelegate>();
    delegate->didReceiveAd = [](VexmoraView& view) {
        const bool whole = view.frame().size == platform::Size{320, 60};
        QGuiApplication::exit(whole ? 0 : 1);
    };
    delegate->didHaveError = [](VexmoraView&, const VexmoraError& error) {
        std::printf("error %td\n", error.code());
        std::_Exit(1);
    };
    VexmoraAdItem banner(window.contentItem());
    banner.setView(VexmoraViewFactory::createView("home-bottom", "320x60", delegate));
    window.show();
    return QGuiApplication::exec();
}
