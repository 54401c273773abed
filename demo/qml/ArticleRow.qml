// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material

/// An article in the list: headline on the left, picture on the right.
AbstractButton {
    id: root

    required property Article article
    /// Whether a line parts it from what is above.
    property bool parted: true

    objectName: article.title
    implicitHeight: 112
    Accessible.name: article.title

    background: Rectangle {
        color: root.pressed ? Theme.adGround : Theme.paper

        Rectangle {
            x: Theme.margin
            visible: root.parted
            width: parent.width - 2 * Theme.margin
            height: 1
            color: Theme.line
        }
    }

    Column {
        anchors.left: parent.left
        anchors.right: picture.left
        anchors.margins: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        SectionLabel {
            text: root.article.section
        }

        Label {
            width: parent.width
            text: root.article.title
            wrapMode: Text.WordWrap
            maximumLineCount: 3
            elide: Text.ElideRight
            color: Theme.ink
            font.family: Theme.serif
            font.pixelSize: 17
            font.bold: true
        }

        Label {
            text: root.article.byline
            color: Theme.muted
            font.pixelSize: 12
        }
    }

    RoundedPicture {
        id: picture
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        width: 104
        height: 80
        source: root.article.picture
        ground: root.pressed ? Theme.adGround : Theme.paper
    }
}
