// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/qt/QuietScope.h"

#include <QtCore/QtGlobal>

namespace VexmoraSDK::platform {
namespace {

thread_local bool quiet = false;

void forwardMessage(QtMsgType type, const QMessageLogContext& context, const QString& message);

// Logging rules would silence the host's own pictures and texts with ours, and a handler put in
// place for each scope would, when two threads have one, put back the wrong one. So one handler,
// put in place once, hands what is not dropped to the handler that it replaced. A host that sets
// its handler later hears everything.
QtMessageHandler replacedHandler() {
    // A message that comes from another thread in the midst of this waits for it.
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
