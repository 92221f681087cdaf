import QtQuick
import QtQuick.Templates as T
import Lunevra.Daytime

// Nothing replaces the content, so that it may be named.
// qmllint disable deferred-property-id

// The button of the settings window. It looks the same while it is disabled.
T.Button {
    id: button

    required property color fill
    property string symbol: ""

    implicitWidth: Math.ceil(implicitContentWidth) + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    horizontalPadding: 14
    verticalPadding: 10
    focusPolicy: Qt.StrongFocus
    Accessible.name: text

    contentItem: Item {
        implicitWidth: label.implicitWidth
        implicitHeight: label.implicitHeight

        SymbolLabel {
            id: label

            anchors.centerIn: parent
            width: implicitWidth
            height: implicitHeight
            symbol: button.symbol
            text: button.text
            weight: Font.DemiBold
        }
    }

    background: Rectangle {
        radius: 8
        color: button.fill
        opacity: button.pressed ? 0.72 : 1

        FocusRing { control: button }
    }

    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()
}
