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

            Repeater {
                model: Articles.others

                Column {
                    id: entry

                    required property Article modelData
                    required property int index

                    width: articles.width

                    ArticleRow {
                        width: parent.width
                        article: entry.modelData
                        onClicked: articles.chosen(article)
                    }

                    Loader {
                        width: parent.width
                        active: entry.index === 0

                        sourceComponent: NativeSlot {
                            events: root.events
                        }
                    }
                }
            }
        }
    }
}
