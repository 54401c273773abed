// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material
import HarbourPost

/// One article to read, a banner below it.
Page {
    id: root

    required property Article article
    required property EventLog events
    required property string containerId
    required property string adSize

    title: article.section

    footer: BannerAd {
        events: root.events
        containerId: root.containerId
        adSize: root.adSize
    }

    background: Rectangle {
        color: Theme.paper
    }

    Flickable {
        anchors.fill: parent
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentHeight: content.implicitHeight

        Column {
            id: content
            width: parent.width

            Image {
                width: parent.width
                height: Theme.whole(width * 7 / 16)
                source: root.article.picture
                fillMode: Image.PreserveAspectCrop
                mipmap: true
            }

            Column {
                id: words
                width: parent.width
                padding: Theme.margin
                topPadding: 8
                spacing: 10

                readonly property real measure: width - 2 * Theme.margin

                Label {
                    width: words.measure
                    text: root.article.caption
                    wrapMode: Text.WordWrap
                    color: Theme.muted
                    font.pixelSize: 11
                }

                Label {
                    width: words.measure
                    text: root.article.title
                    wrapMode: Text.WordWrap
                    color: Theme.ink
                    font.family: Theme.serif
                    font.pixelSize: 26
                    font.bold: true
                    lineHeight: 0.98
                }

                Label {
                    text: root.article.byline
                    color: Theme.muted
                    font.pixelSize: 12
                }

                Rectangle {
                    width: 40
                    height: 2
                    color: Theme.accent
                }

                Label {
                    width: words.measure
                    text: root.article.body
                    wrapMode: Text.WordWrap
                    color: Theme.ink
                    font.family: Theme.serif
                    font.pixelSize: 17
                    lineHeight: 1.25
                }
            }
        }
    }
}
