import QtQuick
import Lunevra.Daytime

// A text that assistive technology can read; it wraps where its width is given. What a line's height
// adds goes below it, so a single line would not be centred in what it labels.
Text {
    property real size: 13
    property int weight: Font.Normal
    property bool isRounded: false

    font: isRounded ? Faces.rounded(size, weight) : Faces.standard(size, weight)
    color: "white"
    height: Math.ceil(implicitHeight)  // whatever is below starts on a whole point
    wrapMode: Text.WordWrap
    lineHeight: lineCount > 1 ? 1.12 : 1
    renderType: Text.NativeRendering
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
