import QtQuick
import QtQuick.Controls.Material
import HarbourPost

/// The front page: the lead article and the others below it, an ad between them.
Page {
    id: root

    required property EventLog events

    signal articleChosen(article: Article)

    title: "The Harbour Post"

    background: Rectangle {
        color: Theme.paper
    }

    Flickable {
        anchors.fill: parent
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentHeight: articles.implicitHeight

        ArticleColumn {
            id: articles
            width: parent.width
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

            NativeSlot {
                width: parent.width
                events: root.events
            }

            Repeater {
                model: Articles.others.length - 1

                ArticleRow {
                    required property int index

                    width: parent.width
                    article: Articles.others[index + 1]
                    onClicked: (parent as ArticleColumn).chosen(article)
                }
            }
        }
    }
}
