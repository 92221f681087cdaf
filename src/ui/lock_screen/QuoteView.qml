import QtQuick
import Lunevra.LockScreen

// A quote and whose it is.
Column {
    id: view

    required property string quote
    required property string author
    required property real availableWidth

    spacing: 12

    ScreenText {
        anchors.horizontalCenter: parent.horizontalCenter
        text: view.quote
        design: TextItem.Serif
        size: Math.min(0.025 * view.availableWidth, 18)
        weight: TextItem.Light
        color: Qt.alpha("white", 0.75)
        lineSpacing: 5
        maximumWidth: Math.min(0.7 * view.availableWidth, 500)
    }

    ScreenText {
        anchors.horizontalCenter: parent.horizontalCenter
        text: view.author
        design: TextItem.Serif
        size: 12
        weight: TextItem.Light
        italic: true
        color: Qt.alpha("white", 0.4)
    }

    Behavior on opacity {
        EaseInOut { duration: 800 }
    }
}
