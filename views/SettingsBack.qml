import QtQuick
import Kelo

// Back from the settings page to the tasks, in the header where the tabs stand.
Rectangle {
    id: root

    required property IslandModel model

    implicitWidth: row.implicitWidth + 18
    implicitHeight: row.implicitHeight + 8
    radius: height / 2
    color: IslandPalette.inkAt(0.14)
    border.width: activeFocus ? 1 : 0
    border.color: IslandPalette.inkAt(0.5)
    activeFocusOnTab: true

    function back() {
        model.endEditing()
        model.toggleSettings()
    }

    Accessible.role: Accessible.Button
    Accessible.name: "Back from Settings"
    Accessible.onPressAction: back()
    Keys.onSpacePressed: back()
    Keys.onReturnPressed: back()

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 4

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron.left"
            size: 10
            color: IslandPalette.ink
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: "Settings"
            font.pixelSize: 12
            font.weight: Font.DemiBold
            color: IslandPalette.ink
        }
    }

    MouseArea {
        anchors.fill: parent
        onClicked: root.back()
    }
}
