import QtQuick
import Lunevra.LockScreen

// The screen of the night.
Item {
    id: view

    required property LockScreenBridge bridge

    // What lies between header and footer is as far apart as it is meant to be wherever there is room.
    // On a low display the two keep a margin, and all that is empty gives way, but no text.
    readonly property real texts: header.height + clock.height + quotes.height + footer.height
    readonly property real empty: 0.29 * height + breath.height - clock.height
    readonly property real room: Math.max(0, Math.min(1, (0.92 * height - texts) / empty))

    BackdropItem {
        anchors.fill: parent
        edgeColor: "#0a0a12"
        middleColor: "#0f0f1a"
        glows: [
            SoftGlow {
                color: Shades.indigo
                diameter: 200
                blurRadius: 80
                strength: 0.3
                centre: Qt.point(0.15, 0.2)
            },
            SoftGlow {
                color: Shades.violet
                diameter: 180
                blurRadius: 70
                strength: 0.25
                centre: Qt.point(0.85, 0.75)
            }
        ]
    }

    Column {
        anchors.centerIn: parent

        Item { width: 1; height: Math.round(0.08 * view.height) }

        Column {
            id: header

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 6

            SymbolItem {
                anchors.horizontalCenter: parent.horizontalCenter
                name: "moon.stars.fill"
                size: 28
                color: Shades.indigo
                endColor: Shades.violet
                shadowColor: Qt.alpha(Shades.indigo, 0.4)
                shadowRadius: 8
            }

            ScreenText {
                anchors.horizontalCenter: parent.horizontalCenter
                text: "Lunevra"
                design: TextItem.Rounded
                size: 14
                weight: TextItem.Medium
                color: Qt.alpha("white", 0.6)
            }
        }

        Item { width: 1; height: Math.round(0.06 * view.height * view.room) }

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            width: breath.width
            height: Math.round(clock.height + (breath.height - clock.height) * view.room)

            BreathingGlowItem {
                id: breath

                anchors.centerIn: parent
                color: Shades.indigo
                breathing: view.Window.visibility !== Window.Hidden
            }

            ClockView {
                id: clock

                anchors.centerIn: parent
                bridge: view.bridge
                availableWidth: view.width
            }
        }

        Item { width: 1; height: Math.round(0.08 * view.height * view.room) }

        // As tall as the quote on it; one that needs another line moves the rest while it fades in.
        Item {
            id: quotes

            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.max(even.width, odd.width)
            height: Math.round(odd.height + (even.height - odd.height) * even.opacity)

            QuoteView {
                id: even

                anchors.centerIn: parent
                opacity: view.bridge.showsOddQuote ? 0 : 1
                availableWidth: view.width
                quote: view.bridge.evenQuote
                author: view.bridge.evenAuthor
            }

            QuoteView {
                id: odd

                anchors.centerIn: parent
                opacity: view.bridge.showsOddQuote ? 1 : 0
                availableWidth: view.width
                quote: view.bridge.oddQuote
                author: view.bridge.oddAuthor
            }
        }

        Item { width: 1; height: Math.round(0.15 * view.height * view.room) }

        LockFooter {
            id: footer

            anchors.horizontalCenter: parent.horizontalCenter
            bridge: view.bridge
        }

        Item { width: 1; height: Math.round(0.06 * view.height) }
    }
}
