// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material
import HarbourPost
import VexmoraSDK

/// A banner at the foot of a page. The server has its pictures in twice the size: they are scaled to
/// fit, so they are sharp on sharp screens, and one that is wider than the page is shown whole.
Rectangle {
    id: root

    required property EventLog events
    required property string containerId
    required property string adSize

    implicitHeight: label.height + ad.height + 8
    color: Theme.adGround

    Rectangle {
        width: parent.width
        height: 1
        color: Theme.line
    }

    Label {
        id: label
        anchors.horizontalCenter: parent.horizontalCenter
        height: 16
        verticalAlignment: Text.AlignVCenter
        visible: !house.visible
        text: "ADVERTISEMENT"
        color: Theme.muted
        font.pixelSize: 8
        font.letterSpacing: 1.2
    }

    VexmoraAdView {
        id: ad
        objectName: "ad"
        anchors.top: label.bottom
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(implicitWidth, root.width - 16)
        height: implicitWidth > 0 ? Theme.whole(implicitHeight * width / implicitWidth) : 0
        containerId: root.containerId
        adSize: root.adSize
        fillMode: Vexmora.FillMode.Fit
        refreshInterval: 30

        onDidReceiveAd: root.events.add("didReceiveAd", root.containerId + " " + root.adSize)
        onDidHaveError: (code, description) => root.events.addError(code, description)
        onBecameViewable: root.events.add("becameViewable", root.containerId + " " + root.adSize)
        onWillLeaveApplication: url => root.events.add("willLeaveApplication", url)
    }

    HouseAd {
        id: house
        anchors.fill: ad
        visible: ad.status === Vexmora.Status.Error
    }
}
