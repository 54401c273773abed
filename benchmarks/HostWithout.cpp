// SPDX-License-Identifier: MIT
// A host that shows no ads, to compare its size and its start with that of one that does.

#include <QtGui/QGuiApplication>

int main(int argc, char** argv) {
    if (argc == 1) return 0;
    const QGuiApplication app(argc, argv);
    return QGuiApplication::exec();
}
