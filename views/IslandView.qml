import QtQuick
import QtQuick.Shapes
import Kelo

// The island: a black notch outline of the model's island size, hanging from the top centre.
Item {
    id: root

    required property IslandModel model

    readonly property real bottomRadius: 10

    Shape {
        id: island

        anchors.top: parent.top
        anchors.horizontalCenter: parent.horizontalCenter
        width: root.model.islandSize.width
        height: root.model.islandSize.height

        ShapePath {
            fillColor: "black"
            strokeWidth: -1
            startX: 0
            startY: 0

            PathLine { x: island.width; y: 0 }
            PathLine { x: island.width; y: island.height - root.bottomRadius }
            PathArc {
                x: island.width - root.bottomRadius
                y: island.height
                radiusX: root.bottomRadius
                radiusY: root.bottomRadius
            }
            PathLine { x: root.bottomRadius; y: island.height }
            PathArc {
                x: 0
                y: island.height - root.bottomRadius
                radiusX: root.bottomRadius
                radiusY: root.bottomRadius
            }
            PathLine { x: 0; y: 0 }
        }
    }
}
