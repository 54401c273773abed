// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material
import HarbourPost
import VexmoraSDK

/// A native ad that the page lays out by itself, like its articles.
AbstractButton {
    id: root

    required property EventLog events

    readonly property string containerId: "article-native"

    objectName: "page ad"
    visible: ad.status === Vexmora.Status.Ready || ad.status === Vexmora.Status.Loading
    implicitHeight: 136
    Accessible.role: Accessible.Link
    Accessible.name: "Advertisement: " + ad.title
    onClicked: ad.open()

    VexmoraAd {
        id: ad
        containerId: root.containerId
        viewType: Vexmora.ViewType.Native
        item: root

        onDidReceiveAd: root.events.add("didReceiveAd", root.containerId + " (page)")
        onDidHaveError: (code, description) => root.events.addError(code, description)
        onBecameViewable: root.events.add("becameViewable", root.containerId + " (page)")
        onWillLeaveApplication: url => root.events.add("willLeaveApplication", url)
    }

    background: Rectangle {
        color: Theme.adGround
    }

    Column {
        anchors.left: parent.left
        anchors.right: picture.left
        anchors.margins: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        SectionLabel {
            text: "Advertisement"
            color: Theme.muted
        }

        Label {
            width: parent.width
            text: ad.title
            textFormat: Text.PlainText
            wrapMode: Text.WordWrap
            maximumLineCount: 2
            elide: Text.ElideRight
            color: Theme.ink
            font.family: Theme.serif
            font.pixelSize: 17
            font.bold: true
        }

        Label {
            width: parent.width
            text: ad.description
            textFormat: Text.PlainText
            wrapMode: Text.WordWrap
            maximumLineCount: 2
            elide: Text.ElideRight
            color: Theme.ink
            font.pixelSize: 12
        }

        Label {
            text: ad.displayName
            textFormat: Text.PlainText
            color: Theme.muted
            font.pixelSize: 12
        }
    }

    VexmoraAdPicture {
        id: picture
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        width: 136
        height: 102
        ad: ad
        fillMode: Vexmora.FillMode.Fit
    }
}
