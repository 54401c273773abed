import QtQuick
import QtQuick.Controls.Material

/// The front page: the lead article and the others below it.
Page {
    id: root

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

                ArticleRow {
                    required property Article modelData

                    width: parent.width
                    article: modelData
                    onClicked: (parent as ArticleColumn).chosen(article)
                }
            }
        }
    }
}
