// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QEvent>
#include <QList>
#include <QObject>
#include <QPointF>
#include <QQuickWindow>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <functional>

#include "demo/AddressRecorder.h"
#include "demo/EventLog.h"
#include "demo/LocalAdServer.h"

/// Uses the app as a reader would, step by step. A step ends when its expected events have come;
/// then a picture of the window is saved. Each event is printed on a line.
class Scenario : public QObject {
    Q_OBJECT

 public:
    /// All arguments must outlive the scenario.
    Scenario(QQuickWindow& window, EventLog& events, LocalAdServer& server,
             AddressRecorder& recorder, const QDir& out);

    /// Begins the first step. Call it before the event loop runs, so that no event is missed.
    void start();

 Q_SIGNALS:
    /// Emitted at the end, and maybe again. `error` is empty if every step went as expected.
    void finished(const QString& error);

 private:
    struct Step {
        QString name;
        std::function<void()> action;
        QStringList expected;  ///< The beginnings of events, as they are printed, in any order.
    };

    void tap(const QString& objectName);
    /// Calls a function of an item in QML.
    void call(const QString& objectName, const char* function);
    void tapClose();
    /// Turns the device, or turns it back.
    void turn();
    void tapAt(const QPointF& at);
    void send(QEvent::Type type, const QPointF& at);
    void showContainer(const QString& containerId);
    void hear();
    void hearOpened(const QString& address);
    void take();
    void beginStep();
    void endStepWhenSettled();
    void endStepAfterNextFrame();
    void endStep();
    void finish(const QString& error);

    QQuickWindow& window_;
    EventLog& events_;
    LocalAdServer& server_;
    QDir out_;
    QList<Step> steps_;
    QTimer deadline_;
};
