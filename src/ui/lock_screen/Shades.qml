pragma Singleton
import QtQuick

// The colours that several views share.
QtObject {
    readonly property color indigo: "#6366f1"
    readonly property color violet: "#8b5cf6"
    readonly property color red: "#ef4444"
    readonly property color orange: "#f97316"
}
