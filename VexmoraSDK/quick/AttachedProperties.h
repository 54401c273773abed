// SPDX-License-Identifier: MIT
#pragma once

#include <QtQuick/QQuickItem>

namespace VexmoraSDK {

enum class IfMissing { attach, leave };

/// What a type of QtQuick's QML module attaches to an item, by the name of its class. Qt keeps
/// these properties where only QML reaches them: absent unless an engine of the process has
/// imported QtQuick, and absent where nothing is attached yet and shall not be.
QObject* attachedProperties(QQuickItem* item, const char* className, IfMissing ifMissing);

/// Whether `LayoutMirroring` is enabled for an item.
bool isMirrored(QQuickItem* item);
/// Has a slot of the item's called, as `SLOT` gives it, whenever that changes.
void followMirroring(QQuickItem* item, const char* slot);

}  // namespace VexmoraSDK
