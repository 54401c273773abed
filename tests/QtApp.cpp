// SPDX-License-Identifier: MIT
#include <QtCore/QTimer>
#ifdef QT_WIDGETS_LIB
#include <QtWidgets/QApplication>
using Application = QApplication;
#else
#include <QtGui/QGuiApplication>
using Application = QGuiApplication;
#endif

#include "tests/App.h"

namespace VexmoraSDK {

struct App::Impl {
    int argc = 1;
    char name[6] = "tests";
    char* argv[2] = {name, nullptr};
    Application app{argc, argv};
};

App::App() : impl_(std::make_unique<Impl>()) {}

App::~App() = default;

void App::runForAMoment() {
    // The condition that is waited for may become true without an event of this thread.
    QTimer moment;
    moment.start(10);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace VexmoraSDK

// fontconfig never frees the fonts that it has loaded.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}

extern "C" const char* __lsan_default_options() {
    return "print_suppressions=0";
}
