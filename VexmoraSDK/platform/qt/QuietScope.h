// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QScopedValueRollback>

namespace VexmoraSDK::platform {

/// What Qt has to say of the texts of ads is not ours to print. While one of these is alive, what
/// its thread says through Qt's message handler is dropped, fatal messages excepted. Any thread;
/// scopes nest.
class QuietScope {
 public:
    QuietScope();

 private:
    QScopedValueRollback<bool> rollback_;
};

}  // namespace VexmoraSDK::platform
