import QtQuick
import Lunevra.Daytime

// One time of the schedule. A minute that the picker does not have is shown by the time's text.
Column {
    id: row

    required property SettingsBridge bridge
    required property string title
    required property color tint
    required property int hour
    required property int minute
    required property bool isDisabled
    signal hourPicked(int hour)
    signal minutePicked(int minute)

    spacing: 8

    PlainText {
        text: row.title
        weight: Font.Medium
        color: Ink.white(0.62)
    }

    Item {
        width: row.width
        height: Math.max(hours.height, time.height)

        PickerBox {
            id: hours

            objectName: "hour"
            anchors.verticalCenter: parent.verticalCenter
            width: 105
            title: row.title + ", " + row.bridge.texts.hourPicker
            model: row.bridge.hourLabels
            currentIndex: row.hour
            isDisabled: row.isDisabled
            onActivated: index => row.hourPicked(index)
        }

        PickerBox {
            objectName: "minute"
            anchors.left: hours.right
            anchors.leftMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            width: 82
            title: row.title + ", " + row.bridge.texts.minutePicker
            model: row.bridge.minuteLabels
            currentIndex: row.bridge.minuteIndex(row.minute)
            isDisabled: row.isDisabled
            onActivated: index => row.minutePicked(row.bridge.minuteAt(index))
        }

        PlainText {
            id: time

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: row.bridge.timeText(row.hour, row.minute)
            size: 18
            weight: Font.DemiBold
            isRounded: true
            color: row.tint
        }
    }
}
