import QtQuick
import Lunevra.LockScreen

// Before Qt 6.5 nothing binds a component to the file that it stands in.
// qmllint disable unqualified

// What a lock window shows: a dark ground with drifting dots, and the screen of the phase on it.
Item {
    id: root

    required property LockScreenBridge bridge

    // The ambient screen covers these entirely: a night long, the one is not kept, and the dots rest.
    Loader {
        anchors.fill: parent
        active: ambient.opacity < 1
        sourceComponent: BackdropItem {
            edgeColor: "#0a0a0f"
            middleColor: "#12121a"
        }
    }

    ParticleItem {
        anchors.fill: parent
        opacity: 0.3
        visible: ambient.opacity < 1
        bridge: root.bridge
        drifting: visible && root.Window.visibility !== Window.Hidden
    }

    PhaseLayer {
        anchors.fill: parent
        shown: root.bridge.phase === LockScreenBridge.Countdown
        sourceComponent: CountdownView {
            countdownValue: root.bridge.countdownValue
        }
    }

    PhaseLayer {
        id: ambient

        anchors.fill: parent
        shown: root.bridge.phase === LockScreenBridge.Ambient
        sourceComponent: AmbientView {
            bridge: root.bridge
        }
    }
}
