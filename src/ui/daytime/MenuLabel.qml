import QtQuick
import Lunevra.Daytime

// A line of the menu that only tells.
SymbolLabel {
    required property var row

    visible: row.shown
    symbol: row.symbol
    text: row.text
    color: row.color
    size: 11
    symbolWidth: 20
    maximumWidth: 218
    width: implicitWidth
    height: implicitHeight
}
