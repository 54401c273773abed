// SPDX-License-Identifier: MIT
import QtQuick
import HarbourPost
import VexmoraSDK

/// An interstitial ad: requested ahead of time, and presented over everything, once.
Item {
    id: root

    required property EventLog events

    readonly property string containerId: "between-articles-2x"
    readonly property bool settled: !screen.presenting || !screen.moving

    function ask() {
        if (ad.containerId)
            ad.reload();
        else
            ad.containerId = containerId;
    }

    /// Does nothing unless there is an ad that was not shown yet.
    function show() {
        if (screen.present(ad))
            ad.willShowScreen();
    }

    VexmoraAdView {
        id: ad
        anchors.fill: parent
        adSize: "300x250"
        fillMode: Vexmora.FillMode.Fit

        onDidReceiveAd: root.events.add("didReceiveAd", root.containerId)
        onDidHaveError: (code, description) => root.events.addError(code, description)
        onBecameViewable: root.events.add("becameViewable", root.containerId)
        onWillShowScreen: root.events.add("willShowScreen", root.containerId)
        onWillDismissScreen: root.events.add("willDismissScreen", root.containerId)
        onDidDismissScreen: root.events.add("didDismissScreen", root.containerId)
    }

    VexmoraScreen {
        id: screen
        objectName: "screen"
        anchors.fill: parent
    }
}
