#include <QApplication>
#include <QQmlEngine>
#include <QtQml/qqmlextensionplugin.h>
#include <QtQuickTest/quicktest.h>

Q_IMPORT_QML_PLUGIN(KeloPlugin)

namespace {

class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine* engine) {
        // Qt 6.4 does not search its own resource root for modules.
        engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
    }
};

} // namespace

// The views' C++ (menus, tooltips) needs a widgets application.
int main(int argc, char** argv) {
    QApplication app(argc, argv);
    Setup setup;
    return quick_test_main_with_setup(argc, argv, "views", nullptr, &setup);
}

#include "main.moc"
