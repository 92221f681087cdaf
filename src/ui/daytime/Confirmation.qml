import QtQuick
import Lunevra.Daytime

// An alert over the window that it belongs to. Doing nothing is what Return and Escape do.
FocusScope {
    id: alert

    required property string title
    required property string message
    required property string cancelText
    required property string confirmText
    signal confirmed
    signal cancelled

    Accessible.role: Accessible.AlertMessage
    Accessible.name: title
    Accessible.description: message
    Keys.onEscapePressed: cancelled()
    Component.onCompleted: cancel.forceActiveFocus(Qt.TabFocusReason)

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0, 0, 0, 0.6)

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
            onWheel: wheel => wheel.accepted = true
        }
    }

    Rectangle {
        anchors.centerIn: parent
        width: 340
        height: column.height + 2 * 22
        radius: 14
        color: "#1c1c28"
        border.color: Ink.white(0.12)

        Column {
            id: column

            x: 22
            y: 22
            width: parent.width - 2 * 22
            spacing: 10

            PlainText {
                width: parent.width
                text: alert.title
                size: 15
                weight: Font.DemiBold
            }

            PlainText {
                width: parent.width
                bottomPadding: 8
                text: alert.message
                size: 12
                color: Ink.white(0.66)
            }

            Row {
                width: parent.width
                spacing: 10

                LunevraButton {
                    id: cancel

                    objectName: "cancel"
                    width: (parent.width - parent.spacing) / 2
                    text: alert.cancelText
                    fill: Ink.white(0.14)
                    onClicked: alert.cancelled()
                    KeyNavigation.tab: confirm
                    KeyNavigation.right: confirm
                }

                LunevraButton {
                    id: confirm

                    objectName: "confirm"
                    width: (parent.width - parent.spacing) / 2
                    text: alert.confirmText
                    fill: Ink.darkRed
                    onClicked: alert.confirmed()
                    KeyNavigation.tab: cancel
                    KeyNavigation.left: cancel
                }
            }
        }
    }
}
