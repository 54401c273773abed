// SPDX-License-Identifier: MIT
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    QQmlApplicationEngine engine(QUrl("qrc:/Main.qml"));
    return QGuiApplication::exec();
}
