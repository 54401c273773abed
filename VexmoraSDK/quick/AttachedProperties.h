// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QMetaMethod>
#include <QtQuick/QQuickItem>

namespace VexmoraSDK {

/// A type of QtQuick's QML module that attaches properties to items.
enum class AttachedType { accessible, layoutMirroring };

enum class IfMissing { attach, leave };

/// What a type attaches to an item. Qt keeps these properties where only QML reaches them: absent
/// unless an engine of the process has imported QtQuick, and absent where nothing is attached yet
/// and shall not be.
QObject* attachedProperties(QQuickItem* item, AttachedType type, IfMissing ifMissing);

/// Has a slot of the item's called whenever `LayoutMirroring` is enabled or disabled for the item.
void followMirroring(QQuickItem* item, const QMetaMethod& slot);
/// Whether it is enabled, for an item that follows it.
bool isMirrored(QQuickItem* item);

}  // namespace VexmoraSDK
