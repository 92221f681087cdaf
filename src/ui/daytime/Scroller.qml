import QtQuick
import QtQuick.Templates as T
import Lunevra.Daytime

// A scroll bar that is there while there is something to scroll.
T.ScrollBar {
    id: bar

    implicitWidth: 10
    padding: 2
    minimumSize: 0.08
    visible: size < 1

    contentItem: Rectangle {
        implicitWidth: 6
        radius: 3
        color: Ink.white(bar.pressed ? 0.45 : bar.hovered ? 0.35 : 0.22)
    }
}
