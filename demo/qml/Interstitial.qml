import QtQuick
import HarbourPost
import VexmoraSDK

/// An ad over everything, asked for ahead of time and shown once.
Item {
    id: root

    required property EventLog events

    readonly property string containerId: "between-articles"
    property bool ready: false
    readonly property bool settled: !screen.presenting || !screen.moving

    function ask() {
        ad.containerId = containerId;
    }

    /// Does nothing unless an ad has come.
    function show() {
        if (!ready)
            return;
        ready = false;
        ad.willShowScreen();
        screen.present(ad);
    }

    VexmoraAdView {
        id: ad
        anchors.fill: parent
        adSize: "300x250"

        onDidReceiveAd: {
            root.ready = true;
            root.events.add("didReceiveAd", root.containerId);
        }
        onDidHaveError: (code, description) => {
            containerId = "";
            root.events.addError(code, description);
        }
        onWillShowScreen: root.events.add("willShowScreen", root.containerId)
        onWillDismissScreen: root.events.add("willDismissScreen", root.containerId)
        onDidDismissScreen: {
            containerId = "";
            root.events.add("didDismissScreen", root.containerId);
        }
    }

    VexmoraScreen {
        id: screen
        objectName: "screen"
        anchors.fill: parent
    }
}
