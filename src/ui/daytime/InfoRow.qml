import QtQuick
import Lunevra.Daytime
import Lunevra.LockScreen

// A symbol and what it stands for.
Row {
    id: row

    required property string icon
    required property string text

    spacing: 12

    Item {
        width: 20
        height: symbol.height

        SymbolItem {
            id: symbol

            anchors.horizontalCenter: parent.horizontalCenter
            name: row.icon
            size: 14
            color: Ink.lightIndigo
        }
    }

    PlainText {
        width: row.width - 20 - row.spacing
        text: row.text
        size: 12
        color: Ink.white(0.66)
    }
}
