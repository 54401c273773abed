// SPDX-License-Identifier: MIT
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickWindow>
#include <cstdio>

#include "VexmoraSDK/quick/VexmoraAdItem.h"

using namespace VexmoraSDK;

// A banner at the bottom of a Qt Quick window, all in C++.
int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    QQuickWindow window;
    window.setTitle("Banner");
    window.resize(320, 480);

    VexmoraAdItem banner(window.contentItem());
    banner.setY(420);
    banner.setContainerId("home-bottom");
    banner.setAdSize("320x60");

    QObject::connect(&banner, &VexmoraAdItem::didReceiveAd, [] { std::puts("didReceiveAd"); });
    QObject::connect(&banner, &VexmoraAdItem::statusChanged, [&] {
        if (banner.status() == Vexmora::Status::Error) std::puts(qPrintable(banner.errorString()));
    });

    window.show();
    return QGuiApplication::exec();
}
