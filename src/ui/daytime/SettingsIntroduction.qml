import QtQuick
import Lunevra.Daytime
import Lunevra.LockScreen

// What the program promises.
Item {
    id: introduction

    required property SettingsBridge bridge

    implicitHeight: column.height + 2 * 10

    Column {
        id: column

        y: 10
        width: parent.width
        spacing: 12

        SoftDisc {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 76
            height: 76
            startColor: Qt.alpha(Ink.indigo, 0.32)
            endColor: Qt.alpha(Ink.violet, 0.18)

            SymbolItem {
                anchors.centerIn: parent
                name: "lock.shield.fill"
                size: 34
                color: Ink.lightIndigo
                endColor: Ink.lightViolet
            }
        }

        PlainText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: introduction.bridge.texts.promise
            size: 15
            weight: Font.DemiBold
        }

        PlainText {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(parent.width, 420)
            horizontalAlignment: Text.AlignHCenter
            text: introduction.bridge.texts.promiseDetail
            size: 13
            color: Ink.white(0.55)
        }
    }
}
