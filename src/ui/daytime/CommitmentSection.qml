import QtQuick
import Lunevra.Daytime

// Freezing the settings for some days, or that they are frozen.
SettingsSection {
    id: section

    required property SettingsBridge bridge

    title: bridge.texts.commitmentSection
    icon: "calendar.badge.lock"

    Column {
        width: parent.width
        visible: !section.bridge.committed
        spacing: 13

        PlainText {
            width: parent.width
            text: section.bridge.texts.commitmentInvitation
            size: 12
            color: Ink.white(0.55)
        }

        Row {
            spacing: 12

            PlainText {
                anchors.verticalCenter: parent.verticalCenter
                text: section.bridge.texts.durationPicker
                color: Ink.white(0.7)
            }

            PickerBox {
                objectName: "duration"
                width: 130
                title: section.bridge.texts.durationPicker
                model: section.bridge.durationLabels
                currentIndex: section.bridge.duration
                onActivated: index => section.bridge.duration = index
            }
        }

        LunevraButton {
            objectName: "lockSettings"
            width: parent.width
            text: section.bridge.texts.lockSettings
            symbol: "lock.fill"
            fill: Ink.darkRed
            onClicked: section.bridge.askToLock()
        }
    }

    Column {
        width: parent.width
        visible: section.bridge.committed
        spacing: 10

        SymbolLabel {
            symbol: "lock.fill"
            text: section.bridge.texts.committedTitle
            weight: Font.DemiBold
            color: Ink.orange
        }

        PlainText {
            width: parent.width
            text: section.bridge.committedText
            size: 12
            color: Ink.white(0.5)
        }
    }
}
