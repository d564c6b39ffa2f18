import QtQuick
import Kelo

// The closed island: today's ring left of the camera and what is next at its right, each
// centred in a slot 44 wide; nothing but the black notch when today has no task.
Item {
    id: root

    required property IslandModel model

    height: model.notch.height

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        height: parent.height
        visible: root.model.progress.total >= 1

        Item {
            width: 44
            height: parent.height

            ProgressRing {
                anchors.centerIn: parent
                width: 14
                height: 14
                progress: root.model.progress
            }
        }
        // The camera housing.
        Item {
            width: root.model.notch.width
            height: parent.height
        }
        Item {
            width: 44
            height: parent.height

            NextLabel {
                anchors.centerIn: parent
                model: root.model
                compact: true
            }
        }
    }
}
