import QtQuick
import Lunevra.LockScreen

// The screen of one phase: fades in and out, and exists only while something of it can be seen.
Loader {
    required property bool shown

    active: shown || opacity > 0
    opacity: shown ? 1 : 0

    Behavior on opacity {
        EaseInOut { duration: 350 }
    }
}
