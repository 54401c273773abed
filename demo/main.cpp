// SPDX-License-Identifier: MIT
#include <QDir>
#include <QFile>
#include <QFont>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <cstdio>
#include <exception>

#include "demo/AddressRecorder.h"
#include "demo/EventLog.h"
#include "demo/LocalAdServer.h"
#include "demo/Options.h"
#include "demo/Scenario.h"

namespace {

int fail(const QString& error) {
    std::fprintf(stderr, "vexmora-demo: %s\n", qPrintable(error));
    return 1;
}

/// Sets Qt's environment for a run without a display. `folder` must outlive Qt.
void doWithoutDisplay(const QTemporaryDir& folder) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    // Qt warns if this folder is missing, as it may be without a desktop session.
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder.path()));
}

int playScenario(QQuickWindow& window, EventLog& events, LocalAdServer& server,
                 AddressRecorder& recorder, const QDir& out, const bool& qmlWarned) {
    Scenario scenario(window, events, server, recorder, out);
    QString error;
    QObject::connect(
        &scenario, &Scenario::finished, &window,
        [&error](const QString& why) {
            error = why;
            QCoreApplication::exit();
        },
        Qt::SingleShotConnection);
    scenario.start();
    QCoreApplication::exec();
    if (!error.isEmpty()) return fail(error);
    return qmlWarned ? fail(QStringLiteral("QML warned")) : 0;
}

}  // namespace

int main(int argc, char** argv) {
    QString error;
    const std::optional<Options> options = Options::parse(argc, argv, error);
    if (!options) {
        fail(error);
        std::fputs(qPrintable(Options::usage()), stderr);
        return 2;
    }
    if (options->help) {
        std::fputs(qPrintable(Options::usage()), stdout);
        return 0;
    }
    const bool headless = options->out.has_value();
    const QTemporaryDir runtimeFolder;
    if (headless) doWithoutDisplay(runtimeFolder);
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationDisplayName(QStringLiteral("The Harbour Post"));

    AddressRecorder recorder;
    if (headless && !recorder.install())
        return fail(QStringLiteral("cannot record the addresses that are opened"));
    if (headless && !QDir().mkpath(*options->out))
        return fail(QStringLiteral("cannot make the folder %1").arg(*options->out));
    try {
        LocalAdServer server;
        EventLog events;
        bool qmlWarned = false;
        QQmlApplicationEngine engine;
        QObject::connect(&engine, &QQmlEngine::warnings, [&qmlWarned] { qmlWarned = true; });
        engine.addImportPath(QStringLiteral("qrc:/"));
        engine.setInitialProperties({{QStringLiteral("events"), QVariant::fromValue(&events)}});
        engine.load(QUrl(QStringLiteral("qrc:/HarbourPost/Main.qml")));
        if (engine.rootObjects().isEmpty())
            return fail(QStringLiteral("the window cannot be made"));
        if (!headless) return QGuiApplication::exec();
        return playScenario(*qobject_cast<QQuickWindow*>(engine.rootObjects().first()), events,
                            server, recorder, QDir(*options->out), qmlWarned);
    } catch (const std::exception& failure) {
        return fail(QString::fromStdString(failure.what()));
    }
}
