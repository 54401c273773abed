// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Window
import VexmoraSDK

Window {
    visible: true

    VexmoraAdView {
        containerId: "article-native"
        adType: Vexmora.AdType.Native
        onDidReceiveAd: Qt.exit(implicitWidth > 0 ? 0 : 1)
        onDidHaveError: (code, description) => {
            console.log(code, description);
            Qt.exit(1);
        }
    }
}
