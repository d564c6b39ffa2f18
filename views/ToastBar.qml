import QtQuick
import QtQuick.Layouts
import Kelo

// The one-line notice under the list, with Undo when the action can be undone.
Rectangle {
    id: root

    required property IslandModel model

    implicitHeight: 30
    radius: 10
    color: IslandPalette.inkAt(0.08)

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 12

        Text {
            Layout.fillWidth: true
            text: root.model.toast.toast.text
            elide: Text.ElideRight
            maximumLineCount: 1
            font.pixelSize: 12
            color: IslandPalette.inkAt(0.8)
        }
        Text {
            visible: root.model.toast.toast.undoable
            text: "Undo"
            font.pixelSize: 12
            font.weight: Font.DemiBold
            color: IslandPalette.keloOrange
            activeFocusOnTab: visible

            Accessible.role: Accessible.Button
            Accessible.name: text
            Accessible.onPressAction: root.model.undoLast()
            Keys.onReturnPressed: root.model.undoLast()
            Keys.onSpacePressed: root.model.undoLast()

            MouseArea {
                anchors.fill: parent
                anchors.margins: -6
                onClicked: root.model.undoLast()
            }
        }
    }
}
