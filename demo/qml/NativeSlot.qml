import QtQuick
import QtQuick.Controls.Material
import HarbourPost
import VexmoraSDK

/// The place of a native ad between two articles. Its words are dark, so its card is always light.
Item {
    id: root

    required property EventLog events

    readonly property string containerId: "article-native"
    property bool failed: false

    visible: !failed
    implicitHeight: card.height + 2 * card.y

    Rectangle {
        id: card
        x: 10
        y: 4
        width: parent.width - 2 * x
        height: label.height + stage.height + 10
        radius: 8
        color: Theme.card
        border.color: Theme.line

        Label {
            id: label
            x: stage.x
            height: 24
            verticalAlignment: Text.AlignVCenter
            text: "ADVERTISEMENT"
            color: Theme.cardMuted
            font.pixelSize: 8
            font.letterSpacing: 1.2
        }

        Item {
            id: stage
            anchors.top: label.bottom
            anchors.horizontalCenter: parent.horizontalCenter
            width: ad.implicitWidth * fit
            height: Math.max(118, ad.implicitHeight * fit)

            readonly property real fit: Math.min(1, (card.width - 16) / Math.max(1, ad.implicitWidth))

            VexmoraAdView {
                id: ad
                objectName: "native ad"
                containerId: root.containerId
                viewType: Vexmora.ViewType.Native
                scale: stage.fit
                transformOrigin: Item.TopLeft

                onDidReceiveAd: root.events.add("didReceiveAd", root.containerId)
                onDidHaveError: (code, description) => {
                    root.failed = true;
                    root.events.addError(code, description);
                }
                onWillLeaveApplication: url => root.events.add("willLeaveApplication", url)
            }
        }
    }
}
