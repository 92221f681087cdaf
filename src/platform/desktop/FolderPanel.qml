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

    // The chooser is drawn in these; they are the settings window's.
    palette {
        window: "#12121a"
        windowText: "white"
        base: "#0a0a0f"
        alternateBase: "#12121a"
        text: "white"
        placeholderText: "#8cffffff"
        button: "#2a2a32"
        buttonText: "white"
        light: "#12121a"
        midlight: "#22222c"
        mid: "#4a4a55"
        dark: "#3a3a44"
        highlight: "#6366f1"
        highlightedText: "white"
    }

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
