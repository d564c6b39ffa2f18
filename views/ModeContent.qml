import QtQuick
import Kelo

// The content of one mode, coming and going as the island changes mode: it rises into place
// from a little lower and smaller while it fades in, and sinks and fades as it leaves. It is
// built when first shown and, unless `keep`, dropped once it has left.
Item {
    id: root

    property bool shown: false
    property bool keep: false
    // Build it now, in the background, although it is not shown yet; implies `keep`.
    property bool preload: false
    property alias sourceComponent: loader.sourceComponent
    readonly property alias item: loader.item
    property real presence: shown ? 1 : 0
    property bool built: false

    visible: presence > 0.01
    onShownChanged: if (shown) built = true
    onPreloadChanged: if (preload) built = true
    Component.onCompleted: built = shown

    Behavior on presence { Spring { preset: Motion.island; epsilon: 0.005 } }

    Loader {
        id: loader

        width: root.width
        height: root.height
        active: root.visible || (root.keep && root.built) || root.preload
        asynchronous: !root.shown
        opacity: Math.min(root.presence, 1)
        y: 8 * (1 - root.presence)
        scale: 0.96 + 0.04 * Math.min(root.presence, 1)
        transformOrigin: Item.Top
    }
}
