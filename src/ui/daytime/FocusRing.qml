import QtQuick

// Shows where the keyboard is.
Rectangle {
    required property Item control

    anchors.fill: control
    anchors.margins: -3
    visible: control.visualFocus
    radius: 10
    color: "transparent"
    border.color: "#a5b4fc"
    border.width: 2
}
