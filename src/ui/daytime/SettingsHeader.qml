import QtQuick
import QtQuick.Templates as T
import Lunevra.Daytime
import Lunevra.LockScreen

// Nothing replaces the content, so that it may be named.
// qmllint disable deferred-property-id

// The bar with the product's name and the button that closes the window.
Rectangle {
    id: header

    required property SettingsBridge bridge

    // Above what scrolls: a clip reaches into the pixel that it ends in.
    z: 1
    implicitHeight: names.height + 2 * 24
    color: Ink.card

    Column {
        id: names

        x: 24
        y: 24
        spacing: 4

        PlainText {
            text: header.bridge.texts.title
            size: 24
            weight: Font.DemiBold
            isRounded: true
            lineHeight: 1
        }

        PlainText {
            text: header.bridge.texts.tagline
            size: 14
            color: Ink.white(0.5)
        }
    }

    T.Button {
        id: close

        objectName: "close"
        anchors.right: parent.right
        anchors.rightMargin: 24
        anchors.verticalCenter: parent.verticalCenter
        implicitWidth: symbol.width
        implicitHeight: symbol.height
        focusPolicy: Qt.StrongFocus
        onClicked: header.bridge.dismiss()
        Keys.onReturnPressed: close.clicked()
        Keys.onEnterPressed: close.clicked()
        Accessible.name: qsTr("Close")

        contentItem: Item {
            SymbolItem {
                id: symbol

                name: "xmark.circle.fill"
                size: 24
                color: Ink.white(close.hovered ? 0.5 : 0.3)
            }
        }

        background: FocusRing {
            control: close
            radius: 18
        }
    }
}
