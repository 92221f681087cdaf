import QtQuick
import Lunevra.LockScreen

// The seconds between bedtime and the lock.
Item {
    id: view

    required property int countdownValue
    readonly property real ringSize: Math.min(width, height) * 0.4
    readonly property real numberSize: Math.min(0.18 * width, 120)
    readonly property bool isLastSecond: countdownValue <= 1

    opacity: animator.opacity

    CountdownAnimator {
        id: animator

        countdownValue: view.countdownValue
    }

    Column {
        anchors.centerIn: parent

        Item { width: 1; height: Math.round(0.1 * view.height) }

        Column {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 10

            SymbolItem {
                anchors.horizontalCenter: parent.horizontalCenter
                name: "moon.zzz.fill"
                size: Math.min(0.05 * view.width, 36)
                color: Shades.indigo
                endColor: Shades.violet
                diagonal: true
            }

            ScreenText {
                anchors.horizontalCenter: parent.horizontalCenter
                text: "Blocking screen in"
                design: TextItem.Rounded
                size: Math.min(0.03 * view.width, 22)
                weight: TextItem.Light
                color: Qt.alpha("white", 0.7)
            }
        }

        Item { width: 1; height: Math.round(0.06 * view.height) }

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.round(view.ringSize)
            height: width

            CountdownRingItem {
                anchors.centerIn: parent
                width: Math.ceil(view.ringSize * 1.04) * 2 - parent.width + 8
                height: width
                diameter: view.ringSize
                progress: animator.ringProgress
                pulseScale: animator.pulseScale
            }

            ScreenText {
                anchors.centerIn: parent
                text: view.countdownValue
                design: TextItem.Rounded
                size: view.numberSize
                weight: TextItem.UltraLight
                equalDigits: true
                color: view.isLastSecond ? Shades.red : "white"
                bottomColor: view.isLastSecond ? Shades.orange : Qt.alpha("white", 0.8)
                shadowRadius: 20
                shadowColor: view.isLastSecond ? Qt.alpha(Shades.red, 0.5) : "transparent"
                scale: animator.numberScale
            }
        }

        Column {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 14
            // Out of the way of the outline, which grows by so much as it breathes.
            transform: Translate { y: Math.ceil(0.04 * view.ringSize) + 2 }

            Row {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 9

                SymbolItem {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "lock.fill"
                    size: 15
                    color: Qt.alpha("white", 0.85)
                }

                ScreenText {
                    anchors.verticalCenter: parent.verticalCenter
                    text: "Locking until morning"
                    size: 15
                    weight: TextItem.Semibold
                    color: Qt.alpha("white", 0.85)
                }
            }

            ScreenText {
                anchors.horizontalCenter: parent.horizontalCenter
                text: "Only the trusted physical USB key can release the computer early"
                size: 11
                weight: TextItem.Light
                color: Qt.alpha("white", 0.3)
            }
        }

        Item { width: 1; height: Math.round(0.08 * view.height) }
    }
}
