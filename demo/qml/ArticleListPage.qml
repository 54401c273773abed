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

        Column {
            id: articles
            width: parent.width

            LeadArticle {
                objectName: "lead article"
                width: parent.width
                article: Articles.lead
                onClicked: root.articleChosen(article)
            }

            Repeater {
                model: Articles.others

                ArticleRow {
                    required property Article modelData

                    width: parent.width
                    article: modelData
                    onClicked: root.articleChosen(article)
                }
            }
        }
    }
}
