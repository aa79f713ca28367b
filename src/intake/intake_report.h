#pragma once

#include "intake/skipped.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace melovane {

class ConfigObjects;

/// What the program was asked for; the numbers are its first argument: keep.
enum class IntakeMode
{
    NewFiles = 1,    ///< files of folders that the library does not know
    ChangedFiles = 2 ///< files of the library that are not what they were when they were read
};

/// What an import did. Counts of rows hold only what is committed.
struct IntakeReport
{
    IntakeMode mode = IntakeMode::NewFiles;
    int found = 0;    ///< files and rows met on the way, whatever became of them
    int known = 0;    ///< files that needed nothing
    int added = 0;    ///< new rows
    int changed = 0;  ///< rows read again
    int moved = 0;    ///< rows that got a new place
    int returned = 0; ///< rows whose missing file is there again
    int missing = 0;  ///< rows whose file is not there (changed files only)
    std::vector<Refusal> duplicates;
    Skipped skipped; ///< its refused ones by path once the import is over
    bool cancelled = false;
    QString failure; ///< why the import ended early; empty when it did not

    [[nodiscard]] int rowsWritten() const { return added + changed + moved + returned; }

    /// What was met and not dealt with, because the import ended before its time.
    [[nodiscard]] int leftOver() const;
};

/// "1 Datei", "2 Dateien".
[[nodiscard]] QString fileCount(const ConfigObjects& texts, int number);

/// One sentence with all counts that are not 0; they add up to the number of files at its
/// beginning, which were looked into unless some were left over. A second one names the kinds of
/// sound that were met and are not read.
[[nodiscard]] QString summary(const ConfigObjects& texts, const IntakeReport& report);

/// The summary and one line for each refused file and each duplicate: "path: reason".
[[nodiscard]] QStringList reportLines(const ConfigObjects& texts, const IntakeReport& report);

} // namespace melovane
