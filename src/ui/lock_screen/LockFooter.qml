import QtQuick
import Lunevra.LockScreen

// Until when the lock holds, and whether anything can end it before.
Column {
    id: view

    required property LockScreenBridge bridge

    spacing: 14

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: pill.width + 2 * 28
        height: pill.height + 2 * 14
        radius: Math.min(25, height / 2)
        color: Qt.alpha("white", 0.08)

        // A border of the same rectangle would lie beside its colour, and so hardly show.
        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: "transparent"
            border.color: Qt.alpha("white", 0.1)
            border.width: 1
        }

        Row {
            id: pill

            anchors.centerIn: parent
            spacing: 10

            SymbolItem {
                anchors.verticalCenter: parent.verticalCenter
                name: "lock.fill"
                size: 15
            }

            ScreenText {
                anchors.verticalCenter: parent.verticalCenter
                text: view.bridge.lockedUntilText
                size: 15
                weight: TextItem.Semibold
            }
        }
    }

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 7

        SymbolItem {
            anchors.verticalCenter: parent.verticalCenter
            name: "externaldrive.fill"
            size: 11
            color: Qt.alpha("white", 0.28)
        }

        ScreenText {
            anchors.verticalCenter: parent.verticalCenter
            text: view.bridge.hintText
            size: 11
            weight: TextItem.Light
            color: Qt.alpha("white", 0.28)
        }
    }
}
