import QtQuick

// A rounded ground with an outline that lies on it; a rectangle's own border replaces its colour.
Rectangle {
    id: card

    required property color outline

    Rectangle {
        anchors.fill: parent
        radius: card.radius
        color: "transparent"
        border.color: card.outline
        border.width: 1
    }
}
