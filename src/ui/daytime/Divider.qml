import QtQuick
import Lunevra.Daytime

Rectangle {
    implicitHeight: 1
    color: Ink.white(0.1)
}
