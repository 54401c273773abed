// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Material
import HarbourPost

/// The Harbour Post, a small news app: native ads on the front page, a banner below each article, an
/// interstitial before every other article.
ApplicationWindow {
    id: root

    required property EventLog events

    property string containerId: "home-bottom-2x"
    property int articlesOpened: 0
    /// Whether no page and no ad is moving.
    readonly property bool settled: !pages.busy && interstitial.settled

    function openArticle(article: Article) {
        pages.push(articlePage, {
            article: article,
            events: events,
            containerId: Qt.binding(() => root.containerId),
            adSize: Qt.binding(() => inspector.adSize)
        });
        articlesOpened += 1;
        interstitial.show();
    }

    function goBack() {
        pages.pop();
        if (articlesOpened % 2 === 1)
            interstitial.ask();
    }

    width: 360
    height: 640
    visible: true
    title: "The Harbour Post"
    color: Theme.paper
    font.family: Theme.sans

    Material.theme: Theme.dark ? Material.Dark : Material.Light
    Material.accent: Theme.accent

    Masthead {
        id: masthead
        width: parent.width
        title: (pages.currentItem as Page)?.title ?? ""
        canGoBack: pages.depth > 1
        onBack: root.goBack()
    }

    StackView {
        id: pages
        anchors.top: masthead.bottom
        anchors.bottom: inspector.top
        width: parent.width
        clip: true
        pushEnter: Slide {
            from: pages.width
        }
        pushExit: Slide {
            to: -pages.width
        }
        popEnter: Slide {
            from: -pages.width
        }
        popExit: Slide {
            to: pages.width
        }

        initialItem: ArticleListPage {
            events: root.events
            onArticleChosen: article => root.openArticle(article)
        }
    }

    Component {
        id: articlePage

        ArticlePage {}
    }

    AdInspector {
        id: inspector
        anchors.bottom: parent.bottom
        width: parent.width
        events: root.events
    }

    Interstitial {
        id: interstitial
        anchors.fill: parent
        events: root.events
    }
}
