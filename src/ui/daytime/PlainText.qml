import QtQuick
import Lunevra.Daytime

// A text that assistive technology can read; it wraps where its width is given.
Text {
    property real size: 13
    property int weight: Font.Normal
    property bool isRounded: false

    font: isRounded ? Faces.rounded(size, weight) : Faces.standard(size, weight)
    color: "white"
    wrapMode: Text.WordWrap
    lineHeight: 1.12
    renderType: Text.NativeRendering
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
