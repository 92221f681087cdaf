import QtQuick
import Lunevra.Daytime

// Which layers protect bedtime now.
SettingsSection {
    id: section

    required property SettingsBridge bridge

    title: bridge.texts.dashboardSection
    icon: "shield.checkerboard"
    spacing: 12

    PlainText {
        width: parent.width
        text: section.bridge.texts.dashboardIntroduction
        size: 11
        color: Ink.white(0.5)
    }

    HardnessRow {
        width: parent.width
        bridge: section.bridge
        protection: section.bridge.sessionCover
    }

    HardnessRow {
        width: parent.width
        bridge: section.bridge
        protection: section.bridge.backgroundEnforcer
    }

    HardnessRow {
        width: parent.width
        bridge: section.bridge
        protection: section.bridge.firewallHelper
    }

    SlideSwitch {
        objectName: "firewall"
        width: parent.width
        text: section.bridge.texts.firewallSwitch
        textSize: 12
        textColor: Ink.white(0.75)
        checked: section.bridge.firewallEnabled
        onToggled: section.bridge.firewallEnabled = checked
    }

    HardnessRow {
        width: parent.width
        bridge: section.bridge
        protection: section.bridge.physicalKey
    }

    HardnessRow {
        width: parent.width
        bridge: section.bridge
        protection: section.bridge.endpointSecurity
    }

    PlainText {
        width: parent.width
        topPadding: 4
        text: section.bridge.texts.dashboardNote
        size: 10
        color: Ink.white(0.35)
    }
}
