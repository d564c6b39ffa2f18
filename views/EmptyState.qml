import QtQuick
import Kelo

// What a list shows when it has nothing: an icon, a title, a hint and at most one action.
Column {
    id: root

    property string icon
    property color tint: IslandPalette.ink
    property string title
    property string subtitle
    // The action's label; empty for none.
    property string actionText
    signal action()

    topPadding: 18
    bottomPadding: 18
    spacing: 6

    Icon {
        anchors.horizontalCenter: parent.horizontalCenter
        name: root.icon
        size: 20
        color: root.tint
    }
    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        text: root.title
        font.pixelSize: 13
        font.weight: Font.DemiBold
        color: IslandPalette.inkAt(0.9)
    }
    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(implicitWidth, root.width)
        text: root.subtitle
        wrapMode: Text.Wrap
        font.pixelSize: 11
        color: IslandPalette.inkAt(0.45)
    }
    Item {
        width: 1
        height: 4
        visible: root.actionText !== ""
    }
    PillButton {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: root.actionText !== ""
        text: root.actionText
        onClicked: root.action()
    }
}
