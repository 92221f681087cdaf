import QtQuick
import Lunevra.LockScreen

// The time, what it is time for, and the commitment if there is one.
Column {
    id: view

    required property LockScreenBridge bridge
    required property real availableWidth

    spacing: 8

    ScreenText {
        anchors.horizontalCenter: parent.horizontalCenter
        text: view.bridge.clockText
        design: TextItem.Rounded
        size: Math.min(0.12 * view.availableWidth, 90)
        weight: TextItem.UltraLight
        equalDigits: true
        shadowColor: Qt.alpha(Shades.indigo, 0.5)
        shadowRadius: 30
    }

    ScreenText {
        anchors.horizontalCenter: parent.horizontalCenter
        text: "Time to rest"
        size: 16
        weight: TextItem.Light
        color: Qt.alpha("white", 0.4)
    }

    Item {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: view.bridge.commitmentText !== ""
        width: commitment.width
        height: commitment.height + 4

        Row {
            id: commitment

            y: 4
            spacing: 6

            SymbolItem {
                anchors.verticalCenter: parent.verticalCenter
                name: "lock.fill"
                size: 10
                color: Qt.alpha(Shades.red, 0.6)
            }

            ScreenText {
                anchors.verticalCenter: parent.verticalCenter
                text: view.bridge.commitmentText
                size: 11
                weight: TextItem.Light
                color: Qt.alpha(Shades.red, 0.6)
            }
        }
    }
}
