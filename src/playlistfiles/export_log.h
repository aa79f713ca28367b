#pragma once

#include <QString>

namespace melovane {

/// The log of an export on the screen, `txProgress`: once it is long, only its end stays.
class ExportLog
{
public:
    /// Letters at which the log is cut, and lines that stay then.
    static constexpr qsizetype kCutAt = 30001;
    static constexpr int kKeptLines = 100;

    /// Lines end with CR LF.
    [[nodiscard]] const QString& text() const { return m_text; }

    /// Adds a line. True when older ones were cut.
    bool append(const QString& line);

    /// A line of signs and one that says what comes of it.
    bool appendSection(const QString& line);

private:
    QString m_text;
};

} // namespace melovane
