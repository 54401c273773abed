// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material
import HarbourPost

/// The front page: the lead article and the others below it, an ad among them and one at the end.
Page {
    id: root

    required property EventLog events

    signal articleChosen(article: Article)

    title: "The Harbour Post"

    background: Rectangle {
        color: Theme.paper
    }

    Flickable {
        id: scroller
        objectName: "front page"
        anchors.fill: parent
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentHeight: articles.implicitHeight

        /// Whether the end stays in sight when the page or its content changes its height.
        property bool atEnd: false

        function scrollToStart() {
            atEnd = false;
            contentY = 0;
        }

        function scrollToEnd() {
            atEnd = true;
            contentY = contentHeight - height;
        }

        onContentHeightChanged: if (atEnd) scrollToEnd()
        onHeightChanged: if (atEnd) scrollToEnd()
        onMovementStarted: atEnd = false

        ArticleColumn {
            id: articles
            width: parent.width
            hasAd: pageAd.visible
            onChosen: article => root.articleChosen(article)

            LeadArticle {
                objectName: "lead article"
                width: parent.width
                article: Articles.lead
                onClicked: articles.chosen(article)
            }

            ArticleRow {
                width: parent.width
                article: Articles.others[0]
                onClicked: articles.chosen(article)
            }

            PageNativeAd {
                id: pageAd
                width: parent.width
                events: root.events
            }

            Repeater {
                model: Articles.others.length - 1

                ArticleRow {
                    required property int index

                    width: parent.width
                    article: Articles.others[index + 1]
                    parted: index > 0 || !(parent as ArticleColumn)?.hasAd
                    onClicked: (parent as ArticleColumn).chosen(article)
                }
            }

            LibraryNativeAd {
                width: parent.width
                events: root.events
                near: scroller.contentY > 0 && scroller.contentY + scroller.height > y
            }
        }
    }
}
