import QtQuick
import Lunevra.LockScreen

// A text that assistive technology can read.
TextItem {
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
