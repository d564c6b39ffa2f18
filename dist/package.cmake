# The Debian package, built by `cpack -G DEB` in the build folder after the build. Its shared
# library dependencies come from the binaries (dpkg-shlibdeps); what Kelo loads only at run time
# is named here by hand.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kelo)
set(CPACK_PACKAGE_VENDOR "The Kelo developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "to-do list in a small island at the top of the screen")
set(CPACK_PACKAGE_DESCRIPTION
    "Kelo keeps a personal to-do list without a main window or a taskbar entry. It
draws a small black island at the top centre of the screen, around the camera
notch of notched laptops or where a notch would be. Closed, the island shows
today's progress and what is next; Ctrl+Alt+T or a click opens it with a
quick-add field that reads days and times from plain text, and the Today,
Upcoming and Backlog lists. A timed task turns the island into an alert.
.
All tasks live in one JSON file in the user's data folder, rewritten safely
after every change. The kelo-core command reads quick-add lines and adds tasks
from scripts.")
set(CPACK_STRIP_FILES ON)
# Kelo's install rules all belong to the one unnamed component. Naming it makes CPack keep its
# list of installed files in install_manifest_Unspecified.txt, so that packaging never overwrites
# build/install_manifest.txt, the list of what `cmake --install` put on this machine.
set(CPACK_INSTALL_CMAKE_PROJECTS "${CMAKE_BINARY_DIR};${PROJECT_NAME};Unspecified;/")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)

set(KELO_PACKAGE_MAINTAINER "The Kelo developers <kelo@kelo.invalid>" CACHE STRING
    "The Maintainer field of the Debian package")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${KELO_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# QML modules and Qt plugins are loaded at run time, so dpkg-shlibdeps cannot see them: the
# island's views import QtQuick, QtQuick.Shapes, QtQuick.Layouts, QtQml.WorkerScript and
# Qt.labs.qmlmodels; libqt6svg6 draws the menus' icons. libsystemd0 is loaded when kelo-core
# or kelo's command line first talks to a running Kelo.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libsystemd0, qml6-module-qtquick, qml6-module-qtquick-shapes, qml6-module-qtquick-layouts, qml6-module-qtqml-workerscript, qml6-module-qt-labs-qmlmodels, libqt6svg6")
# The reminder sound plays the theme's "alarm-clock-elapsed" event.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS sound-theme-freedesktop)

include(CPack)
