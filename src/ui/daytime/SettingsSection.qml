import QtQuick
import Lunevra.Daytime

// A titled card.
Card {
    id: section

    required property string title
    required property string icon
    default property alias content: body.data
    property alias spacing: body.spacing

    implicitHeight: card.height + 2 * 20
    radius: 14
    color: Ink.card
    outline: Ink.white(0.05)
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Column {
        id: card

        x: 20
        y: 20
        width: parent.width - 2 * 20
        spacing: 16

        SymbolLabel {
            symbol: section.icon
            text: section.title
            size: 16
            weight: Font.DemiBold
            spacing: 8
        }

        Column {
            id: body

            width: parent.width
        }
    }
}
