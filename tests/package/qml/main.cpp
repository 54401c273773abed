// SPDX-License-Identifier: MIT
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

// Shows the QML file that is named, which ends the app.
int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    QQmlApplicationEngine engine(QUrl::fromLocalFile(app.arguments().at(1)));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
