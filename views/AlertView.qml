import QtQuick
import QtQuick.Layouts
import Kelo

// A task's time has come: the bell swings, its time and title show, and it can be snoozed ten
// minutes or done. Nothing is drawn once the task is gone.
Column {
    id: root

    required property IslandModel model
    readonly property alias bell: bell
    readonly property bool ringing: swing.running

    objectName: "alertView"
    visible: model.hasAlertTodo

    Component.onCompleted: swing.start()

    RowLayout {
        width: root.width
        height: root.model.notch.height

        Item { Layout.preferredWidth: 14 }
        Icon {
            id: bell

            name: "bell.fill"
            size: 13
            color: IslandPalette.keloOrange
            transformOrigin: Item.Top
            rotation: -14
        }
        Item {
            Layout.fillWidth: true
            Layout.minimumWidth: root.model.notch.width
        }
        Text {
            text: root.model.format.time(root.model.alertTodo.hasMinute ? root.model.alertTodo.minute : 0,
                                         false)
            font.family: Fonts.rounded
            font.pixelSize: 12
            font.bold: true
            color: IslandPalette.keloOrange
        }
        Item { Layout.preferredWidth: 14 }
    }

    RowLayout {
        x: 20
        width: root.width - 40
        height: 50
        spacing: 8

        Text {
            Layout.fillWidth: true
            Layout.minimumWidth: 0
            text: root.model.alertTodo.title
            elide: Text.ElideRight
            maximumLineCount: 1
            font.pixelSize: 14
            font.weight: Font.DemiBold
            color: IslandPalette.ink
        }
        PillButton {
            objectName: "snooze"
            text: "Snooze 10m"
            fill: IslandPalette.inkAt(0.14)
            textColor: IslandPalette.ink
            onClicked: root.model.snooze(root.model.alertTodo.id)
        }
        PillButton {
            objectName: "done"
            text: "Done"
            fill: IslandPalette.keloGreen
            textColor: "black"
            onClicked: root.model.completeAlert()
        }
    }

    // Nine strokes of 0.12 s, from one side to the other, coming to rest at +14°.
    SequentialAnimation {
        id: swing

        SequentialAnimation {
            loops: 4
            NumberAnimation { target: bell; property: "rotation"; to: 14; duration: 120; easing.type: Easing.InOutQuad }
            NumberAnimation { target: bell; property: "rotation"; to: -14; duration: 120; easing.type: Easing.InOutQuad }
        }
        NumberAnimation { target: bell; property: "rotation"; to: 14; duration: 120; easing.type: Easing.InOutQuad }
    }
}
