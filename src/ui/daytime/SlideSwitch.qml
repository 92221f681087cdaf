import QtQuick
import QtQuick.Templates as T
import Lunevra.Daytime

// A switch with its label in front of it.
T.Switch {
    id: control

    property string detail: ""
    property real textSize: 13
    property color textColor: "white"
    property bool isDisabled: false

    enabled: !isDisabled
    implicitHeight: Math.max(implicitContentHeight, 22)
    rightPadding: 38 + 12
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    Accessible.description: detail

    contentItem: Column {
        topPadding: Math.max(0, Math.round((22 - control.textSize * 1.35) / 2)) * (control.detail === "" ? 1 : 0)
        spacing: 3

        PlainText {
            width: parent.width
            text: control.text
            size: control.textSize
            color: control.textColor
        }

        PlainText {
            width: parent.width
            visible: control.detail !== ""
            text: control.detail
            size: 11
            color: Ink.white(0.45)
        }
    }

    indicator: Rectangle {
        x: control.width - width
        y: Math.round((control.height - height) / 2)
        width: 38
        height: 22
        radius: 11
        opacity: control.isDisabled ? 0.45 : 1
        color: control.checked ? Ink.indigo : Ink.white(0.16)

        Rectangle {
            x: control.checked ? parent.width - width - 2 : 2
            y: 2
            width: 18
            height: 18
            radius: 9
            color: "white"

            Behavior on x {
                NumberAnimation { duration: 120; easing.type: Easing.OutCubic }
            }
        }

        Rectangle {
            anchors.fill: parent
            anchors.margins: -3
            visible: control.visualFocus
            radius: 14
            color: "transparent"
            border.color: "#a5b4fc"
            border.width: 2
        }
    }
}
