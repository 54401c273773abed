// SPDX-License-Identifier: MIT
#include <QtCore/QTranslator>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

#include "VexmoraSDK/VexmoraSDK.h"

using namespace VexmoraSDK;

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    // The library's texts for screen readers, in the user's language.
    QTranslator words;
    const auto folder = platform::Bundle::shippedLibraryFolder() / "translations";
    if (words.load(QLocale(), "vexmorasdk", "_", QString::fromStdString(folder.string())))
        QCoreApplication::installTranslator(&words);
    QQmlApplicationEngine engine(QUrl("qrc:/Main.qml"));
    return QGuiApplication::exec();
}
