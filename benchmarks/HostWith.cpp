#include <QtGui/QGuiApplication>

#include "VexmoraSDK/VexmoraSDK.h"

int main(int argc, char** argv) {
    if (argc == 1) return 0;
    const QGuiApplication app(argc, argv);
    const auto view = VexmoraSDK::VexmoraViewFactory::createView("home-bottom", "320x60", nullptr);
    return QGuiApplication::exec();
}
