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

/// Uses the app as a reader would, step by step, and goes on as soon as a step has had the events
/// that it leads to. Prints a line per event, and keeps a picture of the window after each step.
class Scenario : public QObject {
    Q_OBJECT

 public:
    /// All of them have to outlive the scenario.
    Scenario(QQuickWindow& window, EventLog& events, LocalAdServer& server,
             AddressRecorder& recorder, const QDir& out);

    /// Call it before the event loop runs, so that no event is missed.
    void start();

 Q_SIGNALS:
    /// At the end; the first time counts. `error` is empty when every step went as it should.
    void finished(const QString& error);

 private:
    struct Step {
        QString name;
        std::function<void()> action;
        QStringList expected;  ///< Names of events, as printed.
    };

    void tap(const QString& objectName);
    void tapClose();
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
