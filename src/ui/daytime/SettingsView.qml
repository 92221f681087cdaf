import QtQuick
import QtQuick.Templates as T
import Lunevra.Daytime

// Before Qt 6.5 nothing binds a component to the file that it stands in.
// qmllint disable unqualified

// The settings window.
Rectangle {
    id: view

    required property SettingsBridge bridge
    readonly property bool isAsking: bridge.askingToLock || bridge.askingToReplace
    // What the keyboard goes to must be in sight.
    readonly property Item focused: Window.activeFocusItem

    color: Ink.ground
    onFocusedChanged: scroll.reveal(focused)

    Shortcut {
        sequences: ["Escape", StandardKey.Close]
        enabled: !view.isAsking
        onActivated: view.bridge.dismiss()
    }

    FocusScope {
        id: content

        anchors.fill: parent
        focus: !view.isAsking
        enabled: !view.isAsking

        SettingsHeader {
            id: header

            width: parent.width
            bridge: view.bridge
        }

        Flickable {
            id: scroll

            objectName: "scroll"

            readonly property real page: 0.85 * height

            // Items that are not in the column are in sight anyway.
            function reveal(item: Item) {
                let within = item;
                while (within && within !== column) within = within.parent;
                if (!within) return;
                const top = item.mapToItem(column, 0, 0).y + column.y;
                if (top < contentY + 24)
                    scrollTo(top - 24);
                else if (top + item.height > contentY + height - 24)
                    scrollTo(top + item.height + 24 - height);
            }

            function scrollTo(y: real) {
                contentY = Math.max(0, Math.min(y, contentHeight - height));
            }

            anchors.top: header.bottom
            anchors.bottom: parent.bottom
            width: parent.width
            clip: true
            focus: true
            contentHeight: column.height + 2 * 24
            boundsBehavior: Flickable.StopAtBounds
            interactive: false
            Keys.onUpPressed: scrollTo(contentY - 40)
            Keys.onDownPressed: scrollTo(contentY + 40)
            T.ScrollBar.vertical: Scroller { policy: T.ScrollBar.AlwaysOn }

            component Jump: Shortcut {
                required property real place

                enabled: scroll.enabled
                onActivated: scroll.scrollTo(place)
            }

            Jump { sequence: "PgDown"; place: scroll.contentY + scroll.page }
            Jump { sequence: "PgUp"; place: scroll.contentY - scroll.page }
            Jump { sequence: "Home"; place: 0 }
            Jump { sequence: "End"; place: scroll.contentHeight }

            WheelHandler {
                target: null
                onWheel: event => scroll.scrollTo(scroll.contentY - event.angleDelta.y / 2)
            }

            Column {
                id: column

                x: 24
                y: 24
                width: scroll.width - 2 * 24
                spacing: 22

                SettingsIntroduction {
                    width: parent.width
                    bridge: view.bridge
                }

                LockStatusBanner {
                    width: parent.width
                    visible: view.bridge.committed
                    bridge: view.bridge
                }

                KeySection {
                    width: parent.width
                    bridge: view.bridge
                }

                ScheduleSection {
                    width: parent.width
                    bridge: view.bridge
                }

                ProtectionSection {
                    width: parent.width
                    bridge: view.bridge
                }

                DashboardSection {
                    width: parent.width
                    bridge: view.bridge
                }

                CommitmentSection {
                    width: parent.width
                    bridge: view.bridge
                }

                SettingsSection {
                    width: parent.width
                    title: view.bridge.texts.bedtimeSection
                    icon: "info.circle.fill"
                    spacing: 12

                    Repeater {
                        model: view.bridge.bedtimeFacts

                        InfoRow {
                            required property var modelData

                            width: parent.width
                            icon: modelData.symbol
                            text: modelData.text
                        }
                    }
                }
            }
        }
    }

    Loader {
        anchors.fill: parent
        active: view.bridge.askingToLock
        focus: active
        sourceComponent: Confirmation {
            title: view.bridge.texts.confirmLockTitle
            message: view.bridge.lockMessage
            cancelText: view.bridge.texts.cancel
            confirmText: view.bridge.texts.lockSettings
            onCancelled: view.bridge.cancelConfirmation()
            onConfirmed: view.bridge.confirmLock()
        }
    }

    Loader {
        anchors.fill: parent
        active: view.bridge.askingToReplace
        focus: active
        sourceComponent: Confirmation {
            title: view.bridge.texts.replaceKeyTitle
            message: view.bridge.texts.replaceKeyMessage
            cancelText: view.bridge.texts.cancel
            confirmText: view.bridge.texts.replaceKeyConfirm
            onCancelled: view.bridge.cancelConfirmation()
            onConfirmed: view.bridge.confirmReplace()
        }
    }
}
