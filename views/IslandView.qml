import QtQuick
import Kelo

// The island: a black (or glass) body in the notch's outline, as large as the model says for its
// mode, hanging from the top centre of the window, with the content of the mode inside. Every
// change of size and outline moves with the island spring. A click on the closed, peeking or
// alerting island opens it; a secondary click opens the island's menu in every mode.
Item {
    id: root

    required property IslandModel model

    readonly property int mode: model.mode.kind
    readonly property bool open: mode === Island.Open
    readonly property bool closed: mode === Island.Closed
    readonly property bool glassTheme: model.preferences.theme === Island.Glass && model.glassMaterial
    // The closed island is always black.
    readonly property bool glass: glassTheme && !closed
    // The desktop's colour scheme, which the glass island's System look follows.
    property bool systemDark: DesktopScheme.dark
    readonly property bool lookDark: model.preferences.glassLook === Island.Dark
                                     || (model.preferences.glassLook === Island.System && systemDark)
    readonly property bool dark: !glassTheme || closed || lookDark
    readonly property alias island: island
    readonly property alias body: body
    readonly property IslandMenu menu: IslandMenu { model: root.model }
    readonly property alias openView: openContent.item
    // Set a moment after the first frame.
    property bool warm: false

    Timer {
        interval: 300
        running: true
        onTriggered: root.warm = true
    }

    Binding {
        target: IslandPalette
        property: "dark"
        value: root.dark
    }

    Item {
        id: island

        anchors.top: parent.top
        anchors.horizontalCenter: parent.horizontalCenter
        width: root.model.islandSize.width
        height: root.model.islandSize.height
        property real topRadius: IslandOutline.topRadius(root.mode)
        property real bottomRadius: IslandOutline.bottomRadius(root.mode)

        Behavior on width { Spring { preset: Motion.island } }
        Behavior on height { Spring { preset: Motion.island } }
        Behavior on topRadius { Spring { preset: Motion.island; epsilon: 0.01 } }
        Behavior on bottomRadius { Spring { preset: Motion.island; epsilon: 0.01 } }

        IslandShadow {
            x: island.topRadius
            y: 8
            width: island.width - 2 * island.topRadius
            height: island.height
            opacity: root.open && !root.glass ? 0.5 : 0
            visible: opacity > 0

            Behavior on opacity { Spring { preset: Motion.island; epsilon: 0.01 } }
        }

        GlassFill {
            anchors.fill: parent
            topRadius: island.topRadius
            bottomRadius: island.bottomRadius
            dark: root.dark
            opacity: root.glass ? 1 : 0
            visible: opacity > 0.01

            Behavior on opacity { Spring { preset: Motion.island; epsilon: 0.01 } }
        }

        NotchShape {
            id: body

            anchors.fill: parent
            topRadius: island.topRadius
            bottomRadius: island.bottomRadius
            fillColor: root.glass ? Qt.rgba(0, 0, 0, 0.01) : "black"
        }

        MouseArea {
            anchors.fill: parent
            containmentMask: body
            // Inside the open island clicks belong to its controls.
            acceptedButtons: root.open ? Qt.RightButton : Qt.LeftButton | Qt.RightButton
            onClicked: mouse => {
                if (mouse.button === Qt.RightButton)
                    root.menu.popup()
                else if (!root.open)
                    root.model.open(false)
            }
        }

        // Content stays within the body's sides; only the rounded bottom corners are not cut.
        Item {
            id: frame

            x: island.topRadius
            width: Math.max(0, island.width - 2 * island.topRadius)
            height: island.height
            clip: true

            Item {
                id: canvas

                x: (frame.width - width) / 2
                width: root.model.islandSize.width
                height: root.model.islandSize.height

                ModeContent {
                    anchors.fill: parent
                    shown: root.closed
                    sourceComponent: ClosedView { model: root.model }
                }
                ModeContent {
                    anchors.fill: parent
                    shown: root.mode === Island.Peek
                    sourceComponent: PeekView { model: root.model }
                }
                ModeContent {
                    anchors.fill: parent
                    shown: root.mode === Island.Alert
                    sourceComponent: AlertView { model: root.model }
                }
                // Built in the background soon after start and kept, so that the island opens
                // without building its longest view first.
                ModeContent {
                    id: openContent

                    anchors.fill: parent
                    shown: root.open
                    keep: true
                    preload: root.warm
                    sourceComponent: OpenView { model: root.model }
                }
            }
        }
    }
}
