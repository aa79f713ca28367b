#pragma once

#include "care/removed_track.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace melovane {

class FileLocator;
class Files;

/// A file whose track a merge removes.
struct MergedFile
{
    RemovedTrack track;
    QString place;   ///< where it lay, see FileLocator
    qint64 size = 0; ///< bytes: another file that has its place now is not touched
};

/// The files that a merge of doubles brings to the recycle folder: written down before their rows
/// go, forgotten when they have moved. A program that is killed in between leaves it, and the next
/// start moves what it names, see LeftMerges.
///
/// It lies beside the library, in a file of its own for each merge.
class MergeJournal
{
public:
    MergeJournal(Files& files, const QString& library);

    /// To be called inside of the transaction that removes the rows: whoever holds the write lock
    /// behind it sees whether they are gone. Writes nothing where no track has a file. \throws
    /// IoError
    void begin(const std::vector<RemovedTrack>& tracks, FileLocator& locator);

    /// The files have moved, or stay for good. Nothing without begin().
    void end();

    /// Journals beside a library; a look into its folder, no more.
    [[nodiscard]] static QStringList left(const Files& files, const QString& library);

    /// What a journal names; nothing when it cannot be read.
    [[nodiscard]] static std::optional<std::vector<MergedFile>> read(const Files& files,
                                                                     const QString& journal);

private:
    [[nodiscard]] QString freeName() const;

    Files& m_files;
    QString m_library;
    QString m_current; ///< the journal of the present merge; empty for none
};

} // namespace melovane
