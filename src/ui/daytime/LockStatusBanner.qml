import QtQuick
import Lunevra.Daytime
import Lunevra.LockScreen

// Heads the settings while they are frozen.
Card {
    id: banner

    required property SettingsBridge bridge

    implicitHeight: row.height + 2 * 16
    radius: 12
    color: Qt.alpha(Ink.red, 0.15)
    outline: Qt.alpha(Ink.red, 0.3)

    Row {
        id: row

        x: 16
        y: 16
        spacing: 12

        SymbolItem {
            anchors.verticalCenter: parent.verticalCenter
            name: "lock.fill"
            size: 20
            color: Ink.red
        }

        Column {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            PlainText {
                text: banner.bridge.texts.bannerTitle
                size: 14
                weight: Font.DemiBold
            }

            PlainText {
                text: banner.bridge.bannerText
                size: 12
                color: Ink.white(0.6)
            }
        }
    }
}
