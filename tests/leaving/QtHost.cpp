#include <QtGui/QGuiApplication>

#include "tests/leaving/Host.h"

namespace VexmoraSDK {

struct Host::Impl {
    int argc = 1;
    char name[8] = "leaving";
    char* argv[2] = {name, nullptr};
    QGuiApplication app{argc, argv};
};

Host::Host() : impl_(std::make_unique<Impl>()) {}

Host::~Host() = default;

void Host::run() {
    QCoreApplication::exec();
}

void Host::quit() {
    QCoreApplication::quit();
}

}  // namespace VexmoraSDK

// What fontconfig has loaded it keeps, and nothing is to be said about that.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}

extern "C" const char* __lsan_default_options() {
    return "print_suppressions=0";
}
