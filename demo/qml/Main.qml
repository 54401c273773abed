import QtQuick
import QtQuick.Controls.Material
import HarbourPost

/// The Harbour Post, a small news app with a banner at the bottom.
ApplicationWindow {
    id: root

    required property EventLog events

    property string containerId: "home-bottom"
    /// No page is on the move.
    readonly property bool settled: !pages.busy

    width: 360
    height: 640
    visible: true
    title: "The Harbour Post"
    color: Theme.paper
    font.family: Theme.sans

    Material.theme: Material.Light
    Material.accent: Theme.accent

    header: Masthead {
        title: (pages.currentItem as Page)?.title ?? ""
        canGoBack: pages.depth > 1
        onBack: pages.pop()
    }

    StackView {
        id: pages
        anchors.fill: parent
        clip: true

        initialItem: ArticleListPage {
            onArticleChosen: article => pages.push(articlePage, {article: article})
        }
    }

    Component {
        id: articlePage

        ArticlePage {}
    }

    footer: Column {
        AdSlot {
            width: parent.width
            events: root.events
            containerId: root.containerId
            adSize: inspector.adSize
        }

        AdInspector {
            id: inspector
            width: parent.width
            events: root.events
        }
    }
}
