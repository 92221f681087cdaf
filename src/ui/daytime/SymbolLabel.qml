import QtQuick
import Lunevra.Daytime
import Lunevra.LockScreen

// A symbol and a text, in one colour.
Item {
    id: label

    required property string symbol
    required property string text
    property color color: "white"
    property real size: 13
    property int weight: Font.Normal
    property real spacing: 6
    // Symbols of labels that stand under one another are centred on one line.
    property real symbolWidth: icon.implicitWidth
    property real maximumWidth: Infinity

    implicitWidth: icon.visible ? caption.x + caption.width : caption.width
    implicitHeight: Math.max(caption.height, icon.visible ? icon.height : 0)

    SymbolItem {
        id: icon

        x: Math.round((label.symbolWidth - width) / 2)
        y: Math.round((Math.min(firstLine.height, label.height) - height) / 2)
        visible: label.symbol !== ""
        name: label.symbol
        size: label.size
        color: label.color
    }

    FontMetrics {
        id: firstLine

        font: caption.font
    }

    PlainText {
        id: caption

        x: icon.visible ? label.symbolWidth + label.spacing : 0
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, label.maximumWidth - x)
        text: label.text
        color: label.color
        size: label.size
        weight: label.weight
    }
}
