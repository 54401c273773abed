#pragma once

#include <gmock/gmock.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <algorithm>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

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

/// A test of an application, and what it heard. All tests of a process share one application: only
/// the first of a process is accessible and animates.
class AppTest : public testing::Test {
 protected:
    AppTest() {
        if (!QCoreApplication::instance()) new App;
    }

    void hear(const std::string& what) { heard_.push_back(what); }

    bool waitToHear(const std::string& what) {
        return App::waitFor([&] { return std::ranges::find(heard_, what) != heard_.end(); });
    }

    /// What was heard since the last call.
    std::vector<std::string> heard() { return std::exchange(heard_, {}); }

 private:
    std::vector<std::string> heard_;
};

}  // namespace VexmoraSDK
