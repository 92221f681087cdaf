import QtQuick
import Lunevra.LockScreen

// A quote and whose it is.
Column {
    id: view

    required property string quote
    required property string author
    required property real availableWidth

    spacing: 12
    visible: opacity > 0  // a quote that has gone is not read aloud either

    ScreenText {
        id: words

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
        id: source

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
