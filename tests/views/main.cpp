#include <QApplication>
#include <QtQml/qqmlextensionplugin.h>
#include <QtQuickTest/quicktest.h>

Q_IMPORT_QML_PLUGIN(KeloPlugin)

// The views' C++ (menus, tooltips) needs a widgets application.
int main(int argc, char** argv) {
    QApplication app(argc, argv);
    return quick_test_main(argc, argv, "views", nullptr);
}
