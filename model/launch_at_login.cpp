#include "launch_at_login.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <algorithm>
#include <filesystem>
#include <system_error>

using namespace Qt::StringLiterals;

namespace kelo {

namespace {

QString defaultAutostartFolder() {
    // Relative values of XDG_CONFIG_HOME are invalid and must be ignored.
    const QString configHome = qEnvironmentVariable("XDG_CONFIG_HOME");
    const QString base = !configHome.isEmpty() && QDir::isAbsolutePath(configHome)
                             ? configHome
                             : QDir::homePath() % u"/.config"_s;
    return base % u"/autostart"_s;
}

// Characters that make an Exec= argument need quotes.
bool isReserved(QChar c) {
    return u" \t\n\"'\\><~|&;$*?#()`"_s.contains(c);
}

// Whether the entry's [Desktop Entry] group says Hidden=true, which means the entry is deleted.
bool isHidden(QFile& file) {
    bool inMainGroup = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(u'[')) {
            inMainGroup = line == "[Desktop Entry]"_L1;
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (inMainGroup && equals > 0 && line.first(equals).trimmed() == "Hidden"_L1 &&
            line.sliced(equals + 1).trimmed() == "true"_L1) {
            return true;
        }
    }
    return false;
}

} // namespace

LaunchAtLogin::LaunchAtLogin(QObject* parent)
    : LaunchAtLogin(Options{}, parent) {}

LaunchAtLogin::LaunchAtLogin(Options options, QObject* parent)
    : QObject(parent)
    , folder_(options.autostartFolder ? *options.autostartFolder : defaultAutostartFolder())
    , program_(options.program ? *options.program : QCoreApplication::applicationFilePath())
    , log_(std::move(options.log)) {}

QString LaunchAtLogin::entryPath() const {
    return folder_ % u"/kelo.desktop"_s;
}

bool LaunchAtLogin::isEnabled() const {
    QFile file(entryPath());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return false;
    }
    return !isHidden(file);
}

void LaunchAtLogin::setEnabled(bool on) {
    const bool before = isEnabled();
    if (on) {
        registerEntry();
    } else {
        unregisterEntry();
    }
    if (isEnabled() != before) {
        Q_EMIT enabledChanged();
    }
}

QString LaunchAtLogin::execValue(const QString& program) {
    QString argument = program;
    if (std::any_of(program.begin(), program.end(), isReserved)) {
        argument.clear();
        for (const QChar c : program) {
            if (c == u'"' || c == u'`' || c == u'$' || c == u'\\') {
                argument += u'\\';
            }
            argument += c;
        }
        argument = u'"' % argument % u'"';
    }
    // A per-cent sign would start a field code.
    argument.replace(u'%', u"%%"_s);
    // The value is also a string value of the entry file, whose own escapes come on top.
    argument.replace(u'\\', u"\\\\"_s);
    argument.replace(u'\n', u"\\n"_s);
    argument.replace(u'\t', u"\\t"_s);
    argument.replace(u'\r', u"\\r"_s);
    return argument;
}

void LaunchAtLogin::registerEntry() {
    std::error_code error;
    const std::filesystem::path folder = folder_.toStdString();
    std::filesystem::create_directories(folder, error);
    if (error) {
        fail(u"could not create "_s % folder_ % u": "_s % QString::fromStdString(error.message()));
        return;
    }
    QSaveFile file(entryPath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        fail(u"could not write "_s % entryPath() % u": "_s % file.errorString());
        return;
    }
    const QString entry = u"[Desktop Entry]\n"
                          u"Type=Application\n"
                          u"Name=Kelo\n"
                          u"Comment=To-do island\n"
                          u"Exec="_s %
                          execValue(program_) %
                          u"\n"
                          u"Terminal=false\n"
                          u"X-GNOME-Autostart-enabled=true\n"_s;
    file.write(entry.toUtf8());
    if (!file.commit()) {
        fail(u"could not write "_s % entryPath() % u": "_s % file.errorString());
    }
}

void LaunchAtLogin::unregisterEntry() {
    QFile file(entryPath());
    // Nothing registered is what unregistering asks for.
    if (!file.exists()) {
        return;
    }
    if (!file.remove()) {
        fail(u"could not remove "_s % entryPath() % u": "_s % file.errorString());
    }
}

void LaunchAtLogin::fail(const QString& description) const {
    log_(QString(u"Kelo: launch at login failed: "_s % description).toStdString());
}

} // namespace kelo
