#pragma once

#include <QString>

#include <optional>

namespace melovane {

class Clock;
class Files;

/// Tells whether the run before this one came to its end.
///
/// A file stands as long as the program runs. Who finds one from before, and no other copy that
/// runs, knows that the last run died: by a fault, a kill or a power cut. Quiet: where the file
/// cannot be written nothing is known.
class LastRun
{
public:
    /// \param file full path; its folder is there
    LastRun(Files& files, const Clock& clock, QString file);

    /// This run begins. The moment at which the one that died had begun, as the user reads it, or
    /// nothing when it came to its end.
    [[nodiscard]] std::optional<QString> begin();

    /// This run has come to its end.
    void end();

private:
    Files& m_files;
    const Clock& m_clock;
    QString m_file;
};

} // namespace melovane
