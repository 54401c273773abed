// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/qt/QuietScope.h"

#include <QtCore/QtGlobal>

namespace VexmoraSDK::platform {
namespace {

thread_local bool quiet = false;

void forwardMessage(QtMsgType type, const QMessageLogContext& context, const QString& message);

// Logging rules would silence the host's own texts too, and one handler per scope would restore the
// wrong one when two threads have a scope. So one handler is installed once and forwards what it
// does not drop to the handler that it replaced. A handler that the host installs later gets
// everything.
QtMessageHandler replacedHandler() {
    // Messages of other threads wait for this initialisation.
    static const QtMessageHandler handler = qInstallMessageHandler(forwardMessage);
    return handler;
}

void forwardMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (!quiet || type == QtFatalMsg) replacedHandler()(type, context, message);
}

}  // namespace

QuietScope::QuietScope() : rollback_(quiet, true) {
    replacedHandler();
}

}  // namespace VexmoraSDK::platform
