import QtQuick
import QtQuick.Templates as T
import Lunevra.Daytime

// One layer of protection: its light, what it is, and what can be done about it.
Item {
    id: row

    required property SettingsBridge bridge
    required property var protection

    implicitHeight: Math.max(texts.height, button.visible ? button.height : 0)

    Rectangle {
        y: 6
        width: 8
        height: 8
        radius: 4
        color: [Ink.green, Ink.yellow, Ink.red][row.protection.status]
        Accessible.role: Accessible.Indicator
        Accessible.name: [qsTr("armed"), qsTr("needs approval"), qsTr("not installed")][row.protection.status]
    }

    Column {
        id: texts

        x: 8 + 10
        width: row.width - x - (button.visible ? button.width + 12 : 0)
        spacing: 3

        PlainText {
            width: parent.width
            text: row.protection.title
            weight: Font.DemiBold
        }

        PlainText {
            width: parent.width
            text: row.protection.detail
            size: 11
            color: Ink.white(0.55)
        }
    }

    T.Button {
        id: button

        anchors.right: parent.right
        visible: text !== ""
        text: row.protection.actionLabel
        implicitWidth: Math.ceil(implicitContentWidth) + 2 * 10
        implicitHeight: implicitContentHeight + 2 * 5
        horizontalPadding: 10
        verticalPadding: 5
        focusPolicy: Qt.StrongFocus
        onClicked: row.bridge.perform(row.protection.action)
        Keys.onReturnPressed: button.clicked()
        Keys.onEnterPressed: button.clicked()
        Accessible.name: text
        Accessible.description: row.protection.title

        contentItem: PlainText {
            text: button.text
            size: 11
            weight: Font.DemiBold
            lineHeight: 1
            wrapMode: Text.NoWrap
        }

        background: Rectangle {
            radius: 6
            color: ["transparent", Ink.orange, Ink.orange, Ink.indigo, Ink.white(0.15)][row.protection.action]
            opacity: button.pressed ? 0.72 : 1

            FocusRing { control: button }
        }
    }
}
