#pragma once

#include <gmock/gmock.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <chrono>

#include "VexmoraSDK/platform/MainQueue.h"

namespace VexmoraSDK {

/// A started application.
class App {
 public:
    /// Runs the event loop until `condition` holds; false when that takes too long.
    template <class Condition>
    static bool waitFor(Condition condition,
                        std::chrono::seconds longest = std::chrono::seconds(20)) {
        const QDeadlineTimer deadline(longest);
        // Not every condition comes about by an event of this thread.
        QTimer look;
        look.start(std::chrono::milliseconds(10));
        while (!condition()) {
            if (deadline.hasExpired()) return false;
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        return true;
    }

    /// Runs the blocks that are in the main queue now.
    static void runQueuedBlocks() {
        bool ran = false;
        platform::MainQueue::main()->async([&] { ran = true; });
        EXPECT_TRUE(waitFor([&] { return ran; }));
    }

 private:
    static inline int argc = 1;
    static inline char name[] = "qt_tests";
    static inline char* argv[] = {name, nullptr};

    QGuiApplication app_{argc, argv};
};

/// All tests of a process share one application: only the first of a process is accessible and
/// animates.
class AppTest : public testing::Test {
 protected:
    AppTest() { [[maybe_unused]] static const App& app = *new App; }
};

}  // namespace VexmoraSDK
