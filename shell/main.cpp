#include "app_delegate.h"
#include "data_file_lock.h"
#include "remote_command.h"
#include "startup.h"
#include "system_log.h"

#include <QApplication>
#include <QTimer>
#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
    if (const auto answer = kelo::shell::answerCommandLine(argc, argv)) {
        std::fputs(answer->text.c_str(), answer->status == 0 ? stdout : stderr);
        return answer->status;
    }
    if (const auto request = kelo::shell::remoteRequest(argc, argv)) {
        return kelo::shell::runRemote(*request, kelo::shell::chooseDataFile());
    }

    // Settled before anything reads the data file or opens a window, so that a second Kelo on
    // the same file leaves no trace on the desktop.
    const auto dataFile = kelo::shell::chooseDataFile();
    const kelo::DataFileLock lock(dataFile);
    if (lock.status() == kelo::DataFileLock::Status::heldByOther) {
        kelo::systemLog("Kelo: already running with " + dataFile.string() + ".");
        return 1;
    }
    if (lock.status() == kelo::DataFileLock::Status::unavailable) {
        kelo::systemLog("Kelo: could not lock " + lock.lockFile().string() + " (" +
                        std::strerror(lock.error()) + ").");
    }

    kelo::shell::prepareQtEnvironment();
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kelo"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KELO_VERSION));
    QGuiApplication::setQuitOnLastWindowClosed(false);

    kelo::shell::AppDelegate delegate(dataFile);
    QTimer::singleShot(0, &delegate, &kelo::shell::AppDelegate::launchFinished);
    return QCoreApplication::exec();
}
