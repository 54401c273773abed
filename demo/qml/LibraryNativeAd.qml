// SPDX-License-Identifier: MIT
import QtQuick
import HarbourPost
import VexmoraSDK

/// A native ad as the library lays it out, in the colours of the page. It requests an ad when the
/// reader comes near.
Item {
    id: root

    required property EventLog events
    /// Whether it is on the screen, or nearly so.
    required property bool near

    readonly property string containerId: "article-native"

    visible: ad.status !== Vexmora.Status.Error
    implicitHeight: ad.y + ad.height
    onNearChanged: if (near) ad.containerId = containerId

    Rectangle {
        x: Theme.margin
        width: parent.width - 2 * x
        height: 1
        color: Theme.line
    }

    SectionLabel {
        x: Theme.margin
        y: 12
        text: "Advertisement"
        color: Theme.muted
    }

    VexmoraAdView {
        id: ad
        objectName: "native ad"
        x: Theme.margin
        y: 32
        width: Math.min(implicitWidth, root.width - 2 * Theme.margin)
        height: Math.max(110, implicitHeight)
        viewType: Vexmora.ViewType.Native
        fillMode: Vexmora.FillMode.Fit
        textColor: Theme.ink
        secondaryTextColor: Theme.muted

        onDidReceiveAd: root.events.add("didReceiveAd", root.containerId + " (library)")
        onDidHaveError: (code, description) => root.events.addError(code, description)
        onBecameViewable: root.events.add("becameViewable", root.containerId + " (library)")
        onWillLeaveApplication: url => root.events.add("willLeaveApplication", url)
    }
}
