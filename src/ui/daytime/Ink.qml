pragma Singleton
import QtQuick

// The colours that several views share.
QtObject {
    readonly property color ground: "#0a0a0f"
    readonly property color card: "#12121a"
    readonly property color indigo: "#6366f1"
    readonly property color violet: "#8b5cf6"
    readonly property color lightIndigo: "#818cf8"
    readonly property color lightViolet: "#a78bfa"
    readonly property color green: "#22c55e"
    readonly property color yellow: "#eab308"
    readonly property color red: "#ef4444"
    readonly property color darkRed: "#dc2626"
    readonly property color orange: "#f97316"

    function white(opacity: real): color {
        return Qt.rgba(1, 1, 1, opacity);
    }
}
