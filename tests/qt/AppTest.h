#pragma once

#include <gmock/gmock.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <chrono>

namespace VexmoraSDK {

/// The application of a test, started anew for each.
class App {
 public:
    /// Runs the event loop until `condition` holds; false when that takes too long.
    template <class Condition>
    static bool waitFor(Condition condition) {
        const QDeadlineTimer deadline(std::chrono::seconds(20));
        QTimer alarm;
        alarm.start(static_cast<int>(deadline.remainingTime()));
        while (!condition()) {
            if (deadline.hasExpired()) return false;
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        return true;
    }

 private:
    static inline int argc = 1;
    static inline char name[] = "qt_tests";
    static inline char* argv[] = {name, nullptr};

    QGuiApplication app_{argc, argv};
};

class AppTest : public testing::Test {
 protected:
    App app_;
};

}  // namespace VexmoraSDK
