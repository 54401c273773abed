import QtQuick
import QtQuick.Controls.Material
import HarbourPost
import VexmoraSDK

/// The place of a banner, as wide as the page. A banner that is wider is shown smaller, whole. What
/// the ad view tells goes to the event log.
Rectangle {
    id: root

    required property EventLog events
    required property string containerId
    required property string adSize

    property bool failed: false

    implicitHeight: label.height + stage.height + 8
    color: Theme.adGround

    onContainerIdChanged: failed = false
    onAdSizeChanged: failed = false

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
        visible: !root.failed
        text: "ADVERTISEMENT"
        color: Theme.muted
        font.pixelSize: 8
        font.letterSpacing: 1.2
    }

    Item {
        id: stage
        anchors.top: label.bottom
        anchors.horizontalCenter: parent.horizontalCenter
        width: ad.implicitWidth * fit
        height: ad.implicitHeight * fit

        readonly property real fit: Math.min(1, (root.width - 16) / ad.implicitWidth)

        VexmoraAdView {
            id: ad
            objectName: "ad"
            containerId: root.containerId
            adSize: root.adSize
            scale: stage.fit
            transformOrigin: Item.TopLeft
            visible: !root.failed

            onDidReceiveAd: root.events.add("didReceiveAd", root.containerId + " " + root.adSize)
            onDidHaveError: (code, description) => {
                root.failed = true;
                root.events.addError(code, description);
            }
            onWillLeaveApplication: url => root.events.add("willLeaveApplication", url)
        }

        HouseAd {
            anchors.fill: parent
            visible: root.failed
        }
    }
}
