import QtQuick
import QtQuick.Layouts
import QtQuick.Shapes
import Kelo

// One island theme to choose: a miniature of the island on a wallpaper, its name, and a check
// when it is the one in use.
Rectangle {
    id: root

    property int theme: Island.Standard
    property bool on: false
    readonly property string label: theme === Island.Glass ? "Glass" : "Standard"
    signal chosen()

    implicitHeight: column.implicitHeight + 16
    radius: 14
    color: IslandPalette.inkAt(on ? 0.10 : 0.05)
    border.width: 1.5
    border.color: IslandPalette.faded(IslandPalette.keloOrange, on ? 0.8 : 0)
    activeFocusOnTab: true

    Accessible.role: Accessible.RadioButton
    Accessible.name: label
    Accessible.checked: on
    Accessible.onPressAction: chosen()
    Keys.onSpacePressed: chosen()
    Keys.onReturnPressed: chosen()

    Column {
        id: column

        x: 8
        y: 8
        width: root.width - 16
        spacing: 8

        // The wallpaper, with the island hanging from its top edge.
        Shape {
            id: preview

            width: parent.width
            height: 62

            ShapePath {
                strokeColor: "transparent"
                fillGradient: LinearGradient {
                    x1: 0; y1: 0; x2: preview.width; y2: preview.height
                    GradientStop { position: 0; color: Qt.rgba(0.07, 0.37, 0.35, 1) }
                    GradientStop { position: 1; color: Qt.rgba(0.19, 0.18, 0.50, 1) }
                }
                startX: 10; startY: 0
                PathLine { x: preview.width - 10; y: 0 }
                PathArc { x: preview.width; y: 10; radiusX: 10; radiusY: 10 }
                PathLine { x: preview.width; y: preview.height - 10 }
                PathArc { x: preview.width - 10; y: preview.height; radiusX: 10; radiusY: 10 }
                PathLine { x: 10; y: preview.height }
                PathArc { x: 0; y: preview.height - 10; radiusX: 10; radiusY: 10 }
                PathLine { x: 0; y: 10 }
                PathArc { x: 10; y: 0; radiusX: 10; radiusY: 10 }
            }

            NotchShape {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 124
                height: 34
                topRadius: 4
                bottomRadius: 12
                fillColor: root.theme === Island.Glass ? Qt.rgba(1, 1, 1, 0.16) : "black"
                strokeColor: root.theme === Island.Glass ? Qt.rgba(1, 1, 1, 0.45) : "transparent"
                strokeWidth: root.theme === Island.Glass ? 1 : -1

                Row {
                    anchors.horizontalCenter: parent.horizontalCenter
                    y: 8 + (parent.height - 8 - height) / 2
                    spacing: 6

                    Rectangle {
                        anchors.verticalCenter: parent.verticalCenter
                        width: 8
                        height: 8
                        radius: 4
                        color: IslandPalette.keloGreen
                    }
                    Rectangle {
                        anchors.verticalCenter: parent.verticalCenter
                        width: 52
                        height: 5
                        radius: 2.5
                        color: Qt.rgba(1, 1, 1, 0.85)
                    }
                }
            }
        }

        RowLayout {
            x: 2
            width: parent.width - 4

            Text {
                Layout.fillWidth: true
                text: root.label
                font.pixelSize: 12
                font.weight: Font.DemiBold
                color: IslandPalette.inkAt(0.92)
            }
            Icon {
                name: root.on ? "checkmark.circle.fill" : "circle"
                size: 13
                color: root.on ? IslandPalette.keloGreen : IslandPalette.inkAt(0.3)
            }
        }
    }

    MouseArea {
        anchors.fill: parent
        onClicked: root.chosen()
    }
}
