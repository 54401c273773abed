import QtQuick
import VexmoraSDK

/// The screen for interstitial ads, as VexmoraScreenItem.h describes it, with a close button that the
/// keyboard and screen readers know.
VexmoraScreenItem {
    id: root

    Item {
        x: root.closeRect.x
        y: root.closeRect.y
        width: root.closeRect.width
        height: root.closeRect.height
        visible: root.presenting
        activeFocusOnTab: true

        Accessible.role: Accessible.Button
        Accessible.name: root.closeLabel
        Accessible.focusable: true
        Accessible.onPressAction: root.close()
        Keys.onSpacePressed: root.close()
        Keys.onReturnPressed: root.close()
        // The keyboard stays with the ad as long as it is there.
        Keys.onTabPressed: {}
        Keys.onBacktabPressed: {}
    }
}
