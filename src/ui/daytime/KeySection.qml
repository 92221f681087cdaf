import QtQuick
import Lunevra.Daytime

// Creating, replacing and checking the physical key.
SettingsSection {
    id: section

    required property SettingsBridge bridge

    title: bridge.texts.keySection
    icon: "externaldrive.fill"
    spacing: 14

    Row {
        spacing: 10

        SymbolLabel {
            anchors.verticalCenter: parent.verticalCenter
            symbol: section.bridge.keyConfigured ? "checkmark.seal.fill" : "exclamationmark.triangle.fill"
            text: section.bridge.keyStatusText
            weight: Font.DemiBold
            color: section.bridge.keyConfigured ? Ink.green : Ink.orange
        }

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            visible: section.bridge.keyMounted
            width: badge.width + 2 * 8
            height: badge.height + 2 * 4
            radius: height / 2
            color: Qt.alpha(Ink.green, 0.12)

            PlainText {
                id: badge

                anchors.centerIn: parent
                text: section.bridge.texts.connectedBadge
                size: 10
                weight: Font.Bold
                lineHeight: 1
                color: Ink.green
            }
        }
    }

    PlainText {
        width: parent.width
        text: section.bridge.texts.keyExplanation
        size: 12
        color: Ink.white(0.55)
    }

    Row {
        width: parent.width
        spacing: 10

        LunevraButton {
            objectName: "createKey"
            width: parent.width - check.width - parent.spacing
            text: section.bridge.createKeyText
            symbol: "key.fill"
            fill: Ink.indigo
            enabled: section.bridge.canChangeProtection
            onClicked: section.bridge.createKey()
        }

        LunevraButton {
            id: check

            text: section.bridge.texts.checkKey
            symbol: "arrow.clockwise"
            fill: Ink.white(0.12)
            onClicked: section.bridge.checkKey()
        }
    }

    PlainText {
        width: parent.width
        visible: text !== ""
        text: section.bridge.message
        size: 11
        color: Ink.white(0.42)
    }

    SymbolLabel {
        visible: section.bridge.keyConfigured
        symbol: "checkmark.shield.fill"
        text: section.bridge.texts.fingerprintNote
        maximumWidth: parent.width
        size: 11
        color: Qt.alpha(Ink.green, 0.7)
    }
}
