// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QScopedValueRollback>

namespace VexmoraSDK::platform {

/// Suppresses Qt's warnings about the texts of ads. While one is alive, Qt messages of its thread
/// are dropped, except fatal ones. Any thread; scopes nest.
class QuietScope {
 public:
    QuietScope();

 private:
    QScopedValueRollback<bool> rollback_;
};

}  // namespace VexmoraSDK::platform
