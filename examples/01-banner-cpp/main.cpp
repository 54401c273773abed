// SPDX-License-Identifier: MIT
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickWindow>
#include <cstdio>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/quick/VexmoraAdItem.h"

using namespace VexmoraSDK;

// A banner at the bottom of a Qt Quick window, all in C++.
int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    QQuickWindow window;
    window.setTitle("Banner");
    window.resize(320, 480);

    auto delegate = std::make_shared<VexmoraDelegate>();
    delegate->didReceiveAd = [](VexmoraView&) { std::puts("didReceiveAd"); };
    delegate->willLeaveApplication = [](VexmoraView&) { std::puts("willLeaveApplication"); };
    delegate->didHaveError = [](VexmoraView&, const VexmoraError& error) {
        std::printf("didHaveError, code %td\n", error.code());
    };

    VexmoraAdItem banner(window.contentItem());
    banner.setY(420);
    banner.setView(VexmoraViewFactory::createView("home-bottom", "320x60", delegate));

    window.show();
    return QGuiApplication::exec();
}
