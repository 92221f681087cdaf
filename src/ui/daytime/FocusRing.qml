import QtQuick

// Shows where the keyboard is.
Rectangle {
    required property var control

    anchors.fill: parent
    anchors.margins: -3
    visible: control.visualFocus
    radius: 10
    color: "transparent"
    border.color: "#a5b4fc"
    border.width: 2
}
