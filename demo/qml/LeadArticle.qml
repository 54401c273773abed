// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material

/// The article at the top of the front page.
AbstractButton {
    id: root

    required property Article article

    implicitHeight: content.implicitHeight
    Accessible.name: article.title

    background: Rectangle {
        color: root.pressed ? Theme.adGround : Theme.paper
    }

    Column {
        id: content
        width: parent.width

        // A strip of the picture, from a little below its top.
        Item {
            width: parent.width
            height: Theme.whole(width * 0.36)
            clip: true

            Image {
                y: -0.06 * width
                width: parent.width
                height: width * 9 / 16
                source: root.article.picture
                mipmap: true
            }
        }

        Column {
            width: parent.width
            padding: Theme.margin
            topPadding: 10
            spacing: 4

            SectionLabel {
                text: root.article.section
            }

            Label {
                width: parent.width - 2 * Theme.margin
                text: root.article.title
                wrapMode: Text.WordWrap
                color: Theme.ink
                font.family: Theme.serif
                font.pixelSize: 25
                font.bold: true
                lineHeight: 0.98
            }

            Label {
                width: parent.width - 2 * Theme.margin
                text: root.article.summary
                wrapMode: Text.WordWrap
                color: Theme.muted
                font.pixelSize: 14
                lineHeight: 1.15
            }

            Label {
                topPadding: 3
                text: root.article.byline
                color: Theme.muted
                font.pixelSize: 12
            }
        }
    }
}
