import QtQuick
import VexmoraSDK

/// An ad, as VexmoraAdItem.h describes it, that screen readers know.
VexmoraAdItem {
    id: root

    Accessible.role: Accessible.Link
    Accessible.name: qsTr("Advertisement")
    Accessible.onPressAction: root.press()
}
