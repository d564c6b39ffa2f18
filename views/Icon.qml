import QtQuick
import QtQuick.Shapes
import Kelo

// One of Kelo's icons (see Icons), `size` points square, in one colour.
Shape {
    id: root

    property string name
    property color color: IslandPalette.ink
    property real size: 12
    readonly property var shape: Icons.shape(name)
    readonly property real unit: size / Icons.viewBox

    implicitWidth: size
    implicitHeight: size

    ShapePath {
        scale: Qt.size(root.unit, root.unit)
        fillColor: root.color
        strokeColor: "transparent"
        PathSvg { path: root.shape.fill }
    }
    ShapePath {
        scale: Qt.size(root.unit, root.unit)
        fillColor: "transparent"
        strokeColor: root.shape.stroke === "" ? "transparent" : root.color
        strokeWidth: root.shape.strokeWidth * root.unit
        capStyle: ShapePath.RoundCap
        joinStyle: ShapePath.RoundJoin
        PathSvg { path: root.shape.stroke }
    }
}
