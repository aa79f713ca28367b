#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace melovane {

class Clock;
class Files;

/// Counts the failures of one load and writes them to the log of list files.
///
/// One line each, in the form of printLine(): date and time, number, its text, where, the file. The
/// log only grows; its user deletes it. Quiet: what cannot be written is counted all the same.
class M3uErrors
{
public:
    /// Name of the log: keep, users look for it.
    static constexpr char16_t kFileName[] = u"M3UImportError.log";

    /// \param folders the first in which the log can be written gets it: an installed program must
    ///        not write beside itself
    M3uErrors(Files& files, QStringList folders, const Clock& clock);
    ~M3uErrors();
    M3uErrors(const M3uErrors&) = delete;
    M3uErrors& operator=(const M3uErrors&) = delete;

    /// \param source name of the operation, without "MlvM3U."
    /// \param what the file, or more about it
    void add(int code, const QString& source, const QString& what);

    [[nodiscard]] int count() const { return m_count; }

    /// Sets the count to 0; the log stays.
    void restart() { m_count = 0; }

    /// Writes what waits.
    void flush();

    /// Full path of the log.
    [[nodiscard]] QString file() const;

private:
    Files& m_files;
    QStringList m_folders;
    const Clock& m_clock;
    QByteArray m_waiting;
    int m_count = 0;
};

} // namespace melovane
