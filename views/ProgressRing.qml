import QtQuick
import QtQuick.Shapes
import Kelo

// Today's progress: a faint full circle, and a green arc from twelve o'clock, clockwise, for
// the share of today's tasks that are done. The arc springs to a new share.
Item {
    id: root

    property var progress
    property real lineWidth: 2.5
    readonly property real fraction: progress && progress.total > 0 ? progress.done / progress.total : 0
    property real drawnFraction: fraction
    // The drawn arc in degrees.
    readonly property alias sweep: arc.sweepAngle

    Behavior on drawnFraction { Spring { preset: Motion.island; epsilon: 0.002 } }

    Shape {
        anchors.fill: parent

        ShapePath {
            fillColor: "transparent"
            strokeColor: IslandPalette.inkAt(0.15)
            strokeWidth: root.lineWidth
            capStyle: ShapePath.FlatCap
            PathAngleArc {
                centerX: root.width / 2; centerY: root.height / 2
                radiusX: root.width / 2; radiusY: root.height / 2
                startAngle: 0; sweepAngle: 360
            }
        }
        ShapePath {
            fillColor: "transparent"
            // A round cap would draw a dot for an empty arc.
            strokeColor: root.drawnFraction > 0.001 ? IslandPalette.keloGreen : "transparent"
            strokeWidth: root.lineWidth
            capStyle: ShapePath.RoundCap
            PathAngleArc {
                id: arc
                centerX: root.width / 2; centerY: root.height / 2
                radiusX: root.width / 2; radiusY: root.height / 2
                startAngle: -90
                sweepAngle: 360 * Math.min(root.drawnFraction, 1)
            }
        }
    }
}
