import QtQuick
import QtQuick.Dialogs

// The frame of a folder chooser: says what is asked for, above the chooser itself.
Window {
    id: panel

    property string message
    property alias prompt: chooser.acceptLabel
    property alias startFolder: chooser.currentFolder

    signal answered(folder: url)
    signal cancelled

    width: 760
    height: 560
    color: "#0a0a0f"
    palette.highlight: "#6366f1"

    onVisibleChanged: if (visible) chooser.open()
    onClosing: panel.cancelled()

    Text {
        x: 24
        y: 18
        width: panel.width - 48
        wrapMode: Text.WordWrap
        color: "#bfffffff"
        text: panel.message
    }

    FolderDialog {
        id: chooser
        title: panel.title
        parentWindow: panel
        options: FolderDialog.DontUseNativeDialog
        onAccepted: panel.answered(selectedFolder)
        onRejected: panel.cancelled()
    }
}
