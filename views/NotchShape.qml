import QtQuick
import QtQuick.Shapes

// The island's outline: the top edge spans the full width, the top corners flare outward with
// radius `topRadius`, so the body's sides stand `topRadius` in from the edges, and the bottom corners are
// rounded with radius `bottomRadius`. The filled outline is also what takes clicks (containsMode).
Shape {
    id: root

    property real topRadius: 6
    property real bottomRadius: 10
    property color fillColor: "black"
    property color strokeColor: "transparent"
    property real strokeWidth: -1
    readonly property alias outline: outline

    containsMode: Shape.FillContains

    ShapePath {
        id: outline

        fillColor: root.fillColor
        strokeColor: root.strokeColor
        strokeWidth: root.strokeWidth
        startX: 0
        startY: 0

        PathQuad { x: root.topRadius; y: root.topRadius; controlX: root.topRadius; controlY: 0 }
        PathLine { x: root.topRadius; y: root.height - root.bottomRadius }
        PathQuad {
            x: root.topRadius + root.bottomRadius; y: root.height
            controlX: root.topRadius; controlY: root.height
        }
        PathLine { x: root.width - root.topRadius - root.bottomRadius; y: root.height }
        PathQuad {
            x: root.width - root.topRadius; y: root.height - root.bottomRadius
            controlX: root.width - root.topRadius; controlY: root.height
        }
        PathLine { x: root.width - root.topRadius; y: root.topRadius }
        PathQuad { x: root.width; y: 0; controlX: root.width - root.topRadius; controlY: 0 }
    }
}
