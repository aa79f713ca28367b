#pragma once

#include <QHash>
#include <QString>

namespace melovane {

class Clock;
class Files;
class Mod_API;

/// Set for a program by `--log`, and handed on to those that it starts: keep.
inline constexpr const char* kLogVariable = "MELOVANE_LOG";

/// A log is read by hand and sent by mail.
inline constexpr qint64 kMaxLog = 1024LL * 1024;

/// Debug log for short diagnostic runs. Off unless a marker file beside the program asks for it.
///
/// The marker file is program folder + program name + ".log4mlv": lines "key=level" without regard
/// to case, "#" begins a comment, the first line of equal keys counts. `MelovaneDB=DEBUG` switches
/// the log on, `MLVDB.LoadConfig=DEBUG` one area of it; both are needed. It is read once, at
/// construction.
/// A log that is asked for by kLogVariable, as `--log` does, is on for every area that the marker
/// file does not name otherwise.
///
/// A log of more than kMaxLog bytes becomes "name.log.1" at the start of the next one, up to
/// "name.log.3"; older ones go.
class Log4Mlv
{
public:
    Log4Mlv(Mod_API& paths, Files& files, const Clock& clock);

    /// First and second part of the area that lines are written for.
    [[nodiscard]] const QString& ClassName() const { return m_className; }

    void SetClassName(const QString& name) { m_className = name; }

    [[nodiscard]] const QString& AreaName() const { return m_areaName; }

    void SetAreaName(const QString& name) { m_areaName = name; }

    /// Whether the program is switched on.
    [[nodiscard]] bool enabled() const { return m_enabled; }

    /// Configuration path + program name + ".log".
    [[nodiscard]] const QString& logPath() const { return m_logPath; }

    /// Appends "[dd.mm.yyyy hh:nn:ss][Class.Area]::text" if the log and the area are on. Line ends
    /// in the text become blanks. A failing write is ignored.
    void DebugOut(const QString& text);

private:
    void readMarker(const QString& path);
    void rotate();
    [[nodiscard]] bool isOn(const QString& key) const;

    Files& m_files;
    const Clock& m_clock;
    QString m_className;
    QString m_areaName;
    bool m_isAsked = false; ///< for every area
    bool m_enabled = false;
    QString m_logPath;
    QHash<QString, QString> m_levels; ///< upper-case key to upper-case level
};

} // namespace melovane
