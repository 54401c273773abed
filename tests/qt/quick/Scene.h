// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QScreen>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>
#include <memory>

#include "tests/AppTest.h"

namespace VexmoraSDK {

/// A white window with items in it.
class Scene {
 public:
    Scene() { show(QGuiApplication::primaryScreen()); }

    void show(QScreen* screen) {
        window_.setScreen(screen);
        window_.setGeometry({screen->geometry().topLeft(), QSize(400, 300)});
        window_.show();
        EXPECT_TRUE(App::waitFor([&] { return window_.isExposed(); }));
    }

    /// Adds the item that a QML text describes; it must be an `Item`.
    template <class Item = QQuickItem>
    Item* add(const QByteArray& qml) {
        QQmlComponent component(&engine_);
        component.setData("import QtQuick\nimport VexmoraSDK\n" + qml, QUrl());
        auto* item = qobject_cast<Item*>(component.create());
        EXPECT_TRUE(item) << component.errorString().toStdString();
        if (item) add(item);
        return item;
    }

    void add(QQuickItem* item) {
        item->setParent(&window_);
        item->setParentItem(window_.contentItem());
    }

    /// The visible colour at a point of the window.
    QColor colorAt(double x, double y) {
        const QImage picture = window_.grabWindow();
        const double scale = picture.width() / double(window_.width());
        return picture.pixelColor(int(x * scale), int(y * scale));
    }

    /// Waits for a frame, which delivers the movements of fingers.
    void renderFrame() {
        bool rendered = false;
        QObject context;
        QObject::connect(&window_, &QQuickWindow::frameSwapped, &context, [&] { rendered = true; });
        window_.update();
        EXPECT_TRUE(App::waitFor([&] { return rendered; }));
    }

    void mirror() {
        add(R"(Item {
            onParentChanged: if (parent) {
                parent.LayoutMirroring.enabled = true
                parent.LayoutMirroring.childrenInherit = true
            }
        })");
    }

    void click(QPoint point) { QTest::mouseClick(&window_, Qt::LeftButton, {}, point); }

    QQuickWindow& window() { return window_; }

 private:
    QQmlEngine engine_;
    QQuickWindow window_;
};

}  // namespace VexmoraSDK
