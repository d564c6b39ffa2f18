import QtQuick
import QtQuick.Layouts
import Kelo

// The peek: today's ring, count and what is next around the notch, and under it one line about
// the next task.
Column {
    id: root

    required property IslandModel model

    readonly property string line: {
        const progress = model.progress
        if (model.hasNextTimed)
            return model.nextTimed.title
        if (progress.total === 0)
            return "Nothing today. Click to plan."
        if (progress.done === progress.total)
            return "All done for today"
        return (progress.total - progress.done) + " left today"
    }

    RowLayout {
        width: root.width
        height: root.model.notch.height
        spacing: 6

        Item { Layout.preferredWidth: 14 } // the leading padding beyond the row's spacing
        ProgressRing {
            Layout.preferredWidth: 14
            Layout.preferredHeight: 14
            progress: root.model.progress
        }
        Text {
            text: root.model.progress.done + "/" + root.model.progress.total
            font.family: Fonts.rounded
            font.pixelSize: 11
            font.bold: true
            color: IslandPalette.inkAt(0.55)
        }
        // The camera housing lies over this.
        Item {
            Layout.fillWidth: true
            Layout.minimumWidth: root.model.notch.width
        }
        NextLabel {
            model: root.model
            compact: false
        }
        Item { Layout.preferredWidth: 14 }
    }

    Item {
        width: root.width
        height: 26

        Text {
            anchors.fill: parent
            anchors.leftMargin: 24
            anchors.rightMargin: 24
            verticalAlignment: Text.AlignVCenter
            text: root.line
            elide: Text.ElideRight
            maximumLineCount: 1
            font.pixelSize: 12
            font.weight: Font.Medium
            color: IslandPalette.inkAt(0.85)
        }
    }
}
