#include "launch_at_login.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
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

// The keys of an entry's [Desktop Entry] group that Kelo reads.
struct EntryKeys {
    // Hidden=true means the entry is deleted.
    bool hidden = false;
    std::optional<QString> exec;
};

std::optional<EntryKeys> readEntry(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return std::nullopt;
    }
    EntryKeys keys;
    bool inMainGroup = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(u'[')) {
            inMainGroup = line == "[Desktop Entry]"_L1;
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (!inMainGroup || equals <= 0) {
            continue;
        }
        const QString key = line.first(equals).trimmed();
        const QString value = line.sliced(equals + 1).trimmed();
        if (key == "Hidden"_L1) {
            keys.hidden = keys.hidden || value == "true"_L1;
        } else if (key == "Exec"_L1) {
            keys.exec = value;
        }
    }
    return keys;
}

// Undoes the escapes of a string value in an entry file: \s, \n, \t and \r stand for a blank, a
// line feed, a tab and a carriage return; any other escaped character stands for itself.
QString unescapeString(const QString& value) {
    const QString codes = u"sntr"_s;
    const QString characters = u" \n\t\r"_s;
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != u'\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        const QChar escaped = value[++i];
        const qsizetype code = codes.indexOf(escaped);
        text += code < 0 ? escaped : characters[code];
    }
    return text;
}

bool isRunnable(const QString& program) {
    if (!QDir::isAbsolutePath(program)) {
        return !QStandardPaths::findExecutable(program).isEmpty();
    }
    const QFileInfo file(program);
    return file.isFile() && file.isExecutable();
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
    const auto entry = readEntry(entryPath());
    return entry && !entry->hidden;
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

std::optional<QString> LaunchAtLogin::execProgram(const QString& exec) {
    const QString command = unescapeString(exec).trimmed();
    QString program;
    if (command.startsWith(u'"')) {
        qsizetype i = 1;
        for (; i < command.size() && command[i] != u'"'; ++i) {
            if (command[i] == u'\\' && i + 1 < command.size()) {
                ++i;
            }
            program += command[i];
        }
        if (i == command.size()) {
            return std::nullopt;
        }
    } else {
        program = command.section(u' ', 0, 0);
    }
    program.replace(u"%%"_s, u"%"_s);
    if (program.isEmpty()) {
        return std::nullopt;
    }
    return program;
}

void LaunchAtLogin::refreshStaleEntry() {
    const auto entry = readEntry(entryPath());
    if (!entry || entry->hidden) {
        return;
    }
    const auto program = entry->exec ? execProgram(*entry->exec) : std::nullopt;
    if (!program || !isRunnable(*program)) {
        registerEntry();
    }
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
                          u"Icon=kelo\n"
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
