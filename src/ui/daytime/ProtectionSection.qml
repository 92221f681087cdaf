import QtQuick
import Lunevra.Daytime

// The nightly lock's switch, and what brings the program back.
SettingsSection {
    id: section

    required property SettingsBridge bridge
    readonly property bool isOn: bridge.enforcement === SettingsBridge.On

    title: bridge.texts.protectionSection
    icon: "lock.shield.fill"
    spacing: 15

    SlideSwitch {
        objectName: "enableLock"
        width: parent.width
        text: section.bridge.texts.enableSwitch
        detail: section.bridge.texts.enableDetail
        checked: section.bridge.lockEnabled
        isDisabled: !section.bridge.canChangeProtection
        onToggled: section.bridge.lockEnabled = checked
    }

    Divider { width: parent.width }

    Item {
        width: parent.width
        height: Math.max(texts.height, approval.visible ? approval.height : 0)

        Column {
            id: texts

            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 12 - (section.isOn ? state.width : approval.width)
            spacing: 3

            PlainText {
                width: parent.width
                text: section.bridge.texts.enforcement
            }

            PlainText {
                width: parent.width
                text: section.bridge.texts.enforcementDetail
                size: 11
                color: Ink.white(0.45)
            }
        }

        SymbolLabel {
            id: state

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: implicitWidth
            height: implicitHeight
            visible: section.isOn
            symbol: "checkmark.circle.fill"
            text: section.bridge.enforcementLabel
            size: 11
            weight: Font.Bold
            color: Ink.green
        }

        LunevraButton {
            id: approval

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: !section.isOn
            text: section.bridge.enforcementLabel
            fill: Qt.alpha(Ink.orange, 0.7)
            onClicked: section.bridge.performEnforcement()
        }
    }
}
