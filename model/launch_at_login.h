#pragma once

#include <QObject>
#include <QString>
#include <optional>
#include <system_log.h>

namespace kelo {

// Kelo as a login item, through XDG Autostart: the entry kelo.desktop in the autostart folder
// starts the running program at log-in. The state lives in the file system, not in Kelo, so it
// is read afresh every time; Kelo never registers itself without the user asking.
class LaunchAtLogin : public QObject {
    Q_OBJECT
    // Read from the file system on every read; the island menu and the settings page read it
    // each time they are shown, so a change made elsewhere shows up there.
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY enabledChanged FINAL)

public:
    struct Options {
        // None: $XDG_CONFIG_HOME/autostart, or ~/.config/autostart.
        std::optional<QString> autostartFolder;
        // None: the absolute path of the running program.
        std::optional<QString> program;
        LogSink log = systemLog;
    };

    explicit LaunchAtLogin(QObject* parent = nullptr);
    LaunchAtLogin(Options options, QObject* parent = nullptr);

    // Enabled exactly when the entry exists and is not hidden (Hidden=true).
    [[nodiscard]] bool isEnabled() const;
    // Registers (writes the entry, creating the folder) or unregisters (removes the entry). A
    // failure is logged as one line and leaves things as they were; callers re-read `enabled`.
    void setEnabled(bool on);

    // An entry that is on but whose program no longer exists (Kelo moved from a build folder to
    // the package, say) is rewritten to start the running program, so that the user's choice
    // keeps working. Any other entry is left as it is; a failure is logged as one line.
    void refreshStaleEntry();

    [[nodiscard]] QString entryPath() const;

    // The Exec= value that runs the program: quoted and escaped by the rules of desktop entry
    // files when the path holds reserved characters.
    [[nodiscard]] static QString execValue(const QString& program);
    // The program an Exec= value starts: its first argument with the escapes undone; none when
    // the value is empty or its quoting is broken.
    [[nodiscard]] static std::optional<QString> execProgram(const QString& exec);

Q_SIGNALS:
    // The state changed through setEnabled; changes made outside Kelo are seen only on reading.
    void enabledChanged();

private:
    void registerEntry();
    void unregisterEntry();
    void fail(const QString& description) const;

    QString folder_;
    QString program_;
    LogSink log_;
};

} // namespace kelo
