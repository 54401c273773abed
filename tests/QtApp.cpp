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
    // Not all that is waited for comes about by an event of this thread.
    QTimer moment;
    moment.start(10);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace VexmoraSDK

// What fontconfig has loaded it keeps, and nothing is to be said about that.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}

extern "C" const char* __lsan_default_options() {
    return "print_suppressions=0";
}
