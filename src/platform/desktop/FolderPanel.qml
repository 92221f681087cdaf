import QtQuick
import Qt.labs.folderlistmodel

// Asks for a folder: what it is for, the folders in one place, and two buttons. Double click or
// Right goes into a folder, Left goes back up, Return takes the one that is marked, Escape none.
Window {
    id: panel

    property string message
    property string prompt
    property alias startFolder: folders.folder
    // The place itself while nothing in it is marked.
    readonly property url marked: list.currentIndex < 0 ? folders.folder
                                                        : folders.get(list.currentIndex, "fileUrl")

    signal answered(folder: url)
    signal cancelled

    width: 520
    height: 460
    x: Screen.virtualX + (Screen.width - width) / 2
    y: Screen.virtualY + (Screen.height - height) / 2
    flags: Qt.Dialog
    color: "#0a0a0f"

    onClosing: panel.cancelled()

    component Label: Text {
        color: "white"
        elide: Text.ElideMiddle
        textFormat: Text.PlainText  // a drive may be called anything
        font.family: "Inter"
        font.pixelSize: 13
    }

    component PushButton: Rectangle {
        id: button

        required property string text

        signal pressed

        implicitWidth: label.implicitWidth + 36
        implicitHeight: 36
        radius: 8
        border.width: activeFocus ? 2 : 0
        border.color: "#b3b8ff"
        activeFocusOnTab: true
        Accessible.role: Accessible.Button
        Accessible.name: text
        Accessible.onPressAction: button.pressed()
        Keys.onReturnPressed: button.pressed()
        Keys.onSpacePressed: button.pressed()

        Label {
            id: label
            anchors.centerIn: parent
            text: button.text
            font.weight: Font.DemiBold
        }
        TapHandler {
            onTapped: button.pressed()
        }
    }

    FolderListModel {
        id: folders
        showFiles: false
        showDirsFirst: true
        nameFilters: ["*"]
    }

    FocusScope {
        anchors.fill: parent
        focus: true
        Keys.onEscapePressed: panel.cancelled()

        Label {
            id: purpose
            x: 24
            y: 20
            width: parent.width - 48
            wrapMode: Text.WordWrap
            opacity: 0.75
            text: panel.message
        }

        Label {
            id: place
            anchors { top: purpose.bottom; topMargin: 16; left: purpose.left; right: purpose.right }
            font.weight: Font.DemiBold
            text: decodeURIComponent(folders.folder.toString().replace("file://", ""))
        }

        Rectangle {
            anchors {
                top: place.bottom; topMargin: 10; bottom: buttons.top; bottomMargin: 18
                left: purpose.left; right: purpose.right
            }
            radius: 10
            color: "#12121a"
            border.width: list.activeFocus ? 2 : 1
            border.color: list.activeFocus ? "#6366f1" : "#1fffffff"

            Label {
                anchors.centerIn: parent
                visible: list.count === 0
                opacity: 0.5
                text: "No drives or folders here"
            }

            ListView {
                id: list
                objectName: "folders"
                anchors { fill: parent; margins: 6 }
                clip: true
                focus: true
                activeFocusOnTab: true
                model: folders
                currentIndex: -1
                onCountChanged: currentIndex = -1
                Accessible.role: Accessible.List
                Accessible.name: place.text
                Keys.onReturnPressed: take.pressed()
                Keys.onLeftPressed: folders.folder = folders.parentFolder
                Keys.onRightPressed: folders.folder = panel.marked

                component FolderRow: Rectangle {
                    id: row

                    required property int index
                    required property string fileName
                    required property url fileUrl

                    width: ListView.view.width
                    height: 34
                    radius: 7
                    color: ListView.isCurrentItem ? "#6366f1" : "transparent"
                    Accessible.role: Accessible.ListItem
                    Accessible.name: fileName

                    Label {
                        anchors { verticalCenter: parent.verticalCenter; left: parent.left; right: parent.right; margins: 12 }
                        text: row.fileName
                    }
                    TapHandler {
                        onTapped: row.ListView.view.currentIndex = row.index
                        onDoubleTapped: folders.folder = row.fileUrl
                    }
                }

                delegate: FolderRow {}
            }
        }

        Row {
            id: buttons
            anchors { right: parent.right; bottom: parent.bottom; margins: 24 }
            spacing: 10

            PushButton {
                text: "Cancel"
                color: "#2a2a32"
                onPressed: panel.cancelled()
            }
            PushButton {
                id: take
                text: panel.prompt
                color: "#6366f1"
                onPressed: panel.answered(panel.marked)
            }
        }
    }
}
