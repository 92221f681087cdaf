import QtQuick
import QtQuick.Templates as T
import Lunevra.Daytime

// A line of the menu that can be pressed; a checked one is lit.
T.Button {
    id: button

    required property var row

    text: row.text
    enabled: row.enabled
    checked: row.checked
    opacity: enabled ? 1 : 0.4
    implicitWidth: Math.ceil(implicitContentWidth) + 2 * 8
    implicitHeight: implicitContentHeight + 2 * 5
    horizontalPadding: 8
    verticalPadding: 5
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    contentItem: SymbolLabel {
        symbol: button.row.symbol
        text: button.text
        symbolWidth: 18
    }

    background: Rectangle {
        radius: 6
        color: button.checked ? Ink.indigo : Ink.white(button.hovered ? 0.16 : 0.1)
        opacity: button.pressed ? 0.72 : 1

        FocusRing {
            control: button
            radius: 9
        }
    }
}
