#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

namespace melovane {

class ConfigObjects;

/// A file or folder that was left out, and why.
struct Refusal
{
    QString path;
    int code = 0;   ///< number of importerror; 0 for a duplicate
    QString detail; ///< what was found: a key of the texts, or words; may be empty
};

/// Letters of a path in a log: longer than any that a system opens, so that each one that leads to
/// a file stands there whole.
inline constexpr qsizetype kMaxInLog = 4096;

/// What was met on the way into the library and did not become a track. All ways in fill it: the
/// importer, lists, drops.
struct Skipped
{
    std::vector<Refusal> refused; ///< files and folders that could not be read
    QMap<QString, int> kinds;     ///< files of sound that is not read, by kind: "FLAC", "Ogg"

    [[nodiscard]] bool isEmpty() const { return refused.empty() && kinds.isEmpty(); }
};

/// The kind of sound that a file name claims and that is not read: "FLAC", "Ogg", "M4A", "WMA" ...
/// Empty for MP3 files and for everything that is no sound.
[[nodiscard]] QString unreadKind(const QString& fileName);

/// "3 FLAC, 1 Ogg"; empty for none.
[[nodiscard]] QString kindsText(const Skipped& skipped);

/// One line for the user: how many files could not be read, with the name of the first, and the
/// kinds that are not read. Empty when nothing was left out.
[[nodiscard]] QString skippedText(const ConfigObjects& texts, const Skipped& skipped);

/// Why a file was left out, in the user's language.
[[nodiscard]] QString reasonText(const ConfigObjects& texts, const Refusal& refusal);

} // namespace melovane
