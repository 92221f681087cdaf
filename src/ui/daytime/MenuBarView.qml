import QtQuick
import Lunevra.Daytime
import Lunevra.LockScreen

// The menu-bar extra.
Rectangle {
    id: view

    required property MenuBarBridge bridge

    implicitWidth: 250
    implicitHeight: column.height + 2 * 16
    color: Ink.card
    border.color: Ink.white(0.12)
    focus: true
    Keys.onEscapePressed: bridge.close()
    Keys.onUpPressed: step(false)
    Keys.onDownPressed: step(true)

    function step(isForward: bool) {
        Window.activeFocusItem.nextItemInFocusChain(isForward).forceActiveFocus(Qt.TabFocusReason);
    }

    Shortcut {
        sequence: "Ctrl+,"
        onActivated: view.bridge.openSettings()
    }

    Shortcut {
        sequence: "Ctrl+Q"
        onActivated: view.bridge.quit()
    }

    Column {
        id: column

        x: 16
        y: 16
        width: parent.width - 2 * 16
        spacing: 9

        Row {
            spacing: 10

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: 32
                height: 32
                radius: 16
                color: Qt.alpha(Ink.indigo, 0.2)

                SymbolItem {
                    anchors.centerIn: parent
                    name: view.bridge.header.symbol
                    size: 16
                    color: Ink.indigo
                    endColor: Ink.violet
                }
            }

            Column {
                anchors.verticalCenter: parent.verticalCenter
                spacing: 2

                PlainText {
                    text: view.bridge.header.text
                    size: 15
                    weight: Font.DemiBold
                    isRounded: true
                    lineHeight: 1
                }

                PlainText {
                    text: view.bridge.header.detail
                    size: 10
                    lineHeight: 1
                    color: Ink.white(0.55)
                }
            }
        }

        Divider { width: parent.width }
        MenuLabel { row: view.bridge.bedtime }
        MenuLabel { row: view.bridge.release }
        MenuLabel { row: view.bridge.escapeKey }
        MenuLabel { row: view.bridge.commitment }
        Divider { width: parent.width }

        MenuButton {
            objectName: "nightlySwitch"
            row: view.bridge.nightlySwitch
            Accessible.role: Accessible.CheckBox
            Accessible.checkable: true
            Accessible.checked: checked
            onClicked: view.bridge.setEnabled(!row.checked)
        }

        MenuButton {
            objectName: "settings"
            row: view.bridge.settings
            onClicked: view.bridge.openSettings()
        }

        Divider { width: parent.width }

        MenuLabel {
            row: view.bridge.quitRow
            visible: !row.button
        }

        MenuButton {
            objectName: "quit"
            row: view.bridge.quitRow
            visible: row.button
            onClicked: view.bridge.quit()
        }
    }
}
