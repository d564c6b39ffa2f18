import QtQuick
import Qt.labs.qmlmodels
import Kelo

// The rows of one list: tasks, headings and the now line, as the model lays them out. Rows keep
// their place on screen while their task changes, and the list animates with the list spring
// when the change was made with it. It is as tall as its rows up to `maxHeight`, and scrolls
// only beyond.
ListView {
    id: root

    required property IslandModel island
    property real maxHeight: 330
    readonly property bool animated: island.spring === Springs.List

    implicitHeight: Math.min(contentHeight, maxHeight)
    interactive: contentHeight > maxHeight
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    spacing: 2
    reuseItems: false
    activeFocusOnTab: false

    add: Transition {
        enabled: root.animated
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 250 }
    }
    remove: Transition {
        enabled: root.animated
        NumberAnimation { property: "opacity"; to: 0; duration: 200 }
    }
    displaced: Transition {
        enabled: root.animated
        SpringAnimation {
            property: "y"
            spring: Motion.list.spring
            damping: Motion.list.damping
            epsilon: 0.25
        }
    }
    move: displaced

    delegate: DelegateChooser {
        role: "kind"

        DelegateChoice {
            roleValue: Island.Task

            TaskRow {
                width: ListView.view.width
                island: root.island
            }
        }
        DelegateChoice {
            roleValue: Island.Section

            SectionLabel {
                width: ListView.view.width
                text: model.text
                tint: model.tint === Island.Overdue ? IslandPalette.keloRed
                                                    : IslandPalette.inkAt(0.35)
            }
        }
        DelegateChoice {
            roleValue: Island.NowLine

            NowLine {
                width: ListView.view.width
                time: model.text
            }
        }
    }
}
