import QtQuick
import Lunevra.Daytime

// Bedtime and wake time, edited here and handed over when they are saved.
SettingsSection {
    id: section

    required property SettingsBridge bridge

    title: bridge.texts.scheduleSection
    icon: "moon.fill"
    spacing: 18

    TimeSettingRow {
        objectName: "bedtime"
        width: parent.width
        bridge: section.bridge
        title: section.bridge.texts.bedtimeRow
        tint: Ink.lightIndigo
        hour: section.bridge.bedtimeHour
        minute: section.bridge.bedtimeMinute
        isDisabled: !section.bridge.canEditSchedule
        onHourPicked: hour => section.bridge.bedtimeHour = hour
        onMinutePicked: minute => section.bridge.bedtimeMinute = minute
    }

    Divider { width: parent.width }

    TimeSettingRow {
        objectName: "wake"
        width: parent.width
        bridge: section.bridge
        title: section.bridge.texts.wakeRow
        tint: Ink.green
        hour: section.bridge.wakeHour
        minute: section.bridge.wakeMinute
        isDisabled: !section.bridge.canEditSchedule
        onHourPicked: hour => section.bridge.wakeHour = hour
        onMinutePicked: minute => section.bridge.wakeMinute = minute
    }

    LunevraButton {
        objectName: "saveSchedule"
        width: parent.width
        text: section.bridge.texts.saveSchedule
        fill: Ink.indigo
        enabled: section.bridge.canChangeProtection
        onClicked: section.bridge.saveSchedule()
    }
}
