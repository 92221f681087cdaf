import QtQuick
import QtQuick.Templates as T
import Lunevra.Daytime
import Lunevra.LockScreen

// A menu to choose from. The wheel scrolls the window, not the choice.
T.ComboBox {
    id: picker

    required property string title
    property bool isDisabled: false

    enabled: !isDisabled
    opacity: isDisabled ? 0.45 : 1
    implicitHeight: 28
    leftPadding: 10
    rightPadding: 24
    focusPolicy: Qt.StrongFocus
    wheelEnabled: false
    Accessible.name: title

    contentItem: PlainText {
        text: picker.displayText
        lineHeight: 1
        elide: Text.ElideRight
        wrapMode: Text.NoWrap
        verticalAlignment: Text.AlignVCenter
    }

    indicator: SymbolItem {
        x: picker.width - width - 8
        y: Math.round((picker.height - height) / 2)
        name: "chevron.up.chevron.down"
        size: 9
        color: Ink.white(0.55)
    }

    background: Rectangle {
        radius: 7
        color: Ink.white(picker.pressed ? 0.14 : picker.hovered ? 0.11 : 0.08)
        border.color: Ink.white(0.08)

        FocusRing { control: picker }
    }

    delegate: T.ItemDelegate {
        id: entry

        required property string modelData

        width: entry.ListView.view.width
        implicitHeight: 26
        leftPadding: 10
        highlighted: entry.ListView.isCurrentItem
        text: entry.modelData

        contentItem: PlainText {
            text: entry.text
            lineHeight: 1
            verticalAlignment: Text.AlignVCenter
        }

        background: Rectangle {
            radius: 5
            color: entry.highlighted ? Ink.indigo : "transparent"
        }
    }

    popup: T.Popup {
        y: picker.height + 4
        width: picker.width
        implicitHeight: Math.min(contentItem.implicitHeight + 8, 26 * 8 + 8)
        padding: 4
        margins: 8

        contentItem: ListView {
            implicitHeight: contentHeight
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            model: picker.popup.visible ? picker.delegateModel : null
            currentIndex: picker.highlightedIndex
            highlightMoveDuration: 0
            T.ScrollBar.vertical: Scroller {}
        }

        background: Rectangle {
            radius: 8
            color: "#1e1e2a"
            border.color: Ink.white(0.14)
        }
    }
}
