// SPDX-License-Identifier: MIT
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

// Shows the QML file named on the command line, which quits the app.
int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    QQmlApplicationEngine engine(QUrl::fromLocalFile(app.arguments().at(1)));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
