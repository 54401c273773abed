// SPDX-License-Identifier: MIT
#include "demo/Scenario.h"

#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>
#include <QQuickItem>
#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

constexpr std::chrono::seconds kDeadline{30};

QQuickItem* find(QQuickItem* item, const QString& objectName) {
    if (item->objectName() == objectName) return item;
    for (QQuickItem* child : item->childItems()) {
        if (QQuickItem* found = find(child, objectName)) return found;
    }
    return nullptr;
}

}  // namespace

Scenario::Scenario(QQuickWindow& window, EventLog& events, LocalAdServer& server,
                   AddressRecorder& recorder, const QDir& out)
    : window_(window), events_(events), server_(server), out_(out) {
    const QString night = QStringLiteral("appearance");
    const QString sheet = QStringLiteral("inspector");
    const QString frontPage = QStringLiteral("front page");
    steps_ = {
        {QStringLiteral("00-front-page"),
         [] {},
         {QStringLiteral("didReceiveAd article-native (page)"),
          QStringLiteral("becameViewable article-native (page)")}},
        {QStringLiteral("01-banner-320x60"),
         [this] { tap(QStringLiteral("lead article")); },
         {QStringLiteral("didReceiveAd home-bottom-2x 320x60")}},
        {QStringLiteral("02-banner-320x100"),
         [this, sheet] {
             tap(sheet);
             tap(QStringLiteral("size 320x100"));
         },
         {QStringLiteral("didReceiveAd home-bottom-2x 320x100")}},
        {QStringLiteral("03-banner-468x60"),
         [this] { tap(QStringLiteral("size 468x60")); },
         {QStringLiteral("didReceiveAd home-bottom-2x 468x60")}},
        {QStringLiteral("04-tap"),
         [this] { tap(QStringLiteral("ad")); },
         {QStringLiteral("willLeaveApplication http")}},
        {QStringLiteral("05-native"),
         [this, sheet, frontPage] {
             tap(sheet);
             tap(QStringLiteral("back"));
             call(frontPage, "scrollToEnd");
         },
         {QStringLiteral("didReceiveAd between-articles-2x"),
          QStringLiteral("didReceiveAd article-native (library)")}},
        {QStringLiteral("06-native-tap"),
         [this, sheet, frontPage] {
             tap(QStringLiteral("native ad"));
             tap(sheet);
             call(frontPage, "scrollToEnd");
         },
         {QStringLiteral("willLeaveApplication http")}},
        {QStringLiteral("07-interstitial-open"),
         [this, sheet, frontPage] {
             tap(sheet);
             call(frontPage, "scrollToStart");
             tap(QStringLiteral("The night ferry is back on the island run"));
         },
         {QStringLiteral("willShowScreen between-articles-2x"),
          QStringLiteral("didReceiveAd home-bottom-2x 468x60")}},
        {QStringLiteral("08-interstitial-turned"),
         [this] {
             tap(QStringLiteral("screen"));  // The picture takes no taps.
             turn();
         },
         {}},
        {QStringLiteral("09-interstitial-turned-back"), [this] { turn(); }, {}},
        {QStringLiteral("10-interstitial-closed"),
         [this] { tapClose(); },
         {QStringLiteral("willDismissScreen between-articles-2x"),
          QStringLiteral("didDismissScreen between-articles-2x")}},
        {QStringLiteral("11-dark"),
         [this, night] {
             tap(QStringLiteral("back"));
             tap(night);
         },
         {}},
        {QStringLiteral("12-dark-native"),
         [this, frontPage] { call(frontPage, "scrollToEnd"); },
         {}},
        {QStringLiteral("13-no-fill"),
         [this, sheet, frontPage] {
             showContainer(QStringLiteral("fault-empty-array"));
             call(frontPage, "scrollToStart");
             tap(QStringLiteral("lead article"));
             tap(sheet);
         },
         {QStringLiteral("didHaveError ParsingError"), QStringLiteral("didHaveError NoFill")}},
        {QStringLiteral("14-server-down"),
         [this, night] {
             tap(night);
             server_.stop();
             showContainer(QStringLiteral("home-bottom-2x"));
         },
         {QStringLiteral("didHaveError RequestError")}},
    };
    deadline_.setSingleShot(true);
    deadline_.setInterval(kDeadline);
    connect(&deadline_, &QTimer::timeout, this, [this] {
        finish(QStringLiteral("no \"%1\" in time").arg(steps_.first().expected.first()));
    });
    connect(&events_, &EventLog::added, this, &Scenario::hear);
    connect(&recorder, &AddressRecorder::opened, this, &Scenario::hearOpened);
}

void Scenario::start() {
    beginStep();
}

void Scenario::beginStep() {
    deadline_.start();
    // This is a copy, because the events of the action may end the step at once.
    const Step step = steps_.first();
    step.action();
    if (step.expected.isEmpty()) endStepWhenSettled();
}

void Scenario::tap(const QString& objectName) {
    const QQuickItem* item = find(window_.contentItem(), objectName);
    if (!item || !item->isVisible())
        return finish(QStringLiteral("there is no \"%1\" to tap").arg(objectName));
    tapAt(item->mapToScene(item->boundingRect().center()));
}

void Scenario::tapClose() {
    const QQuickItem* screen = find(window_.contentItem(), QStringLiteral("screen"));
    tapAt(screen->mapToScene(screen->property("closeRect").toRectF().center()));
}

void Scenario::call(const QString& objectName, const char* function) {
    QMetaObject::invokeMethod(find(window_.contentItem(), objectName), function);
}

void Scenario::turn() {
    window_.resize(window_.height(), window_.width());
}

void Scenario::tapAt(const QPointF& at) {
    send(QEvent::MouseButtonPress, at);
    send(QEvent::MouseButtonRelease, at);
}

void Scenario::send(QEvent::Type type, const QPointF& at) {
    QMouseEvent event(type, at, at, window_.mapToGlobal(at), Qt::LeftButton,
                      type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&window_, &event);
}

void Scenario::showContainer(const QString& containerId) {
    window_.setProperty("containerId", containerId);
}

void Scenario::hear() {
    // The address is recorded a moment later. The event counts from then on.
    if (events_.latest().name != QLatin1String("willLeaveApplication")) take();
}

void Scenario::hearOpened(const QString& address) {
    const EventLog::Event& event = events_.latest();
    if (event.name != QLatin1String("willLeaveApplication") || event.details != address)
        return finish(QStringLiteral("%1 was not to be opened").arg(address));
    take();
}

void Scenario::take() {
    const EventLog::Event& event = events_.latest();
    Step& step = steps_.first();
    std::printf("%s  %-22s  %-20s  %s\n", qPrintable(event.time), qPrintable(step.name),
                qPrintable(event.name), qPrintable(event.details));
    std::fflush(stdout);
    const QString text = event.name + u' ' + event.details;
    const auto found = std::find_if(step.expected.begin(), step.expected.end(),
                                    [&](const QString& start) { return text.startsWith(start); });
    if (found != step.expected.end()) {
        step.expected.erase(found);
        if (step.expected.isEmpty()) endStepWhenSettled();
    } else if (event.name != QLatin1String("becameViewable")) {  // Its time of arrival varies.
        finish(QStringLiteral("\"%1\" was not to happen").arg(text));
    }
}

void Scenario::endStepWhenSettled() {
    deadline_.stop();
    endStepAfterNextFrame();
}

void Scenario::endStepAfterNextFrame() {
    connect(&window_, &QQuickWindow::frameSwapped, this, &Scenario::endStep,
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    window_.update();
}

void Scenario::endStep() {
    if (!window_.property("settled").toBool()) return endStepAfterNextFrame();
    const QString picture = out_.filePath(steps_.first().name + QLatin1String(".png"));
    if (!window_.grabWindow().save(picture))
        return finish(QStringLiteral("cannot write %1").arg(picture));
    if (steps_.size() == 1) return finish({});
    steps_.removeFirst();
    beginStep();
}

void Scenario::finish(const QString& error) {
    disconnect(&events_, nullptr, this, nullptr);
    deadline_.stop();
    Q_EMIT finished(error.isEmpty() ? error : steps_.first().name + QLatin1String(": ") + error);
}
