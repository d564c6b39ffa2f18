import QtQuick
import QtQuick.Layouts
import Kelo

// One setting: its title on the left, its control on the right.
Item {
    id: root

    property string title
    default property alias control: slot.data

    implicitHeight: 30

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 10
        anchors.rightMargin: 10

        Text {
            Layout.fillWidth: true
            text: root.title
            font.pixelSize: 13
            color: IslandPalette.inkAt(0.92)
        }
        Item {
            id: slot

            Layout.preferredWidth: childrenRect.width
            Layout.preferredHeight: childrenRect.height
        }
    }
}
