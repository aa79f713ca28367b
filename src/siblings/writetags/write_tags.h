#pragma once

#include "intake/tag_import.h"
#include "platform/media/tag_writer.h"
#include "store/file_locator.h"
#include "trackedit/kept_covers.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace melovane {

class Database;
class DbError;
class DBEngine;

/// What the writing of tags needs of the system. All outlive it.
struct WriteTagsParts
{
    DBEngine& engine;
    Files& files;
    const TagReader& reader;
    const CoverReader& covers;
    TagWriter& writer;
    const Clock& clock;
    QString dataFolder;           ///< of `ChangeDir.conf`
    std::function<bool()> isLent; ///< whether the library must be let go of
};

struct WriteTagsOrder
{
    QString database;  ///< full path of the database file
    int id3v2Tags = 1; ///< the setting of that name: which tag an import takes
};

/// A file that was not written; its track stays in `db_edit`.
struct UnwrittenFile
{
    QString fid;
    QString path;
    TagWriteFault fault = TagWriteFault::Failed;
    QString detail; ///< the system's own words, or empty
};

struct WriteTagsReport
{
    int written = 0; ///< files that were changed
    std::vector<UnwrittenFile> failures;
    bool isLent = false; ///< ended because the library was lent
    int dbError = 0;     ///< number of the error of the database that ended it; 0 for none
    QString dbText;

    /// True when nothing failed and nothing ended it too early.
    [[nodiscard]] bool isComplete() const { return failures.empty() && !isLent && dbError == 0; }
};

/// Writes what was changed in the library into the tags of the audio files: the tracks of table
/// `db_edit`.
///
/// A track leaves the table when its file is on the disc, and only if its row still says what was
/// written; a file that fails keeps it there. Files that already hold all of it are not touched,
/// tracks that are no longer in the library leave the table. Size and date of a written file go
/// into its row, so that no import takes it for changed. The file is where FileLocator finds it.
///
/// A cover that the user has chosen and that did not reach its file, and one that was taken back,
/// is written, too: see KeptCovers.
class WriteTags
{
public:
    WriteTags(WriteTagsParts parts, WriteTagsOrder order);
    ~WriteTags();

    /// Writes up to `files` files. False when there is nothing left to do; never throws.
    bool step(int files);

    /// What is written stays; the next step() gives false.
    void cancel() { m_over = true; }

    [[nodiscard]] qint64 done() const { return m_done; }

    /// Tracks that are known to wait; more may come meanwhile.
    [[nodiscard]] qint64 total() const { return m_total; }

    /// The file that was written last.
    [[nodiscard]] const QString& file() const { return m_file; }

    [[nodiscard]] const WriteTagsReport& report() const { return m_report; }

private:
    /// A track of the step.
    struct Track
    {
        QString fid;
        QStringList texts;
        QString image; ///< the name of its cover
        QString path;
        bool isGone = false;    ///< no longer in the library
        bool isInStep = false;  ///< the row knows size and date of its file
        bool isFailing = false; ///< the file cannot be read
        bool hasCover = false;  ///< its cover is written
        int work = -1;          ///< of the writer; -1 for none
    };

    void keepFailures();
    void open();
    [[nodiscard]] bool collect();
    void write(qsizetype count);
    [[nodiscard]] Track prepare(const QString& fid, std::vector<TagWork>& work);
    void compare(Track& track, const FileFacts& facts, std::vector<TagWork>& work);
    void settle(const std::vector<Track>& tracks, const std::vector<TagWriting>& results);
    [[nodiscard]] bool isStillSo(const Track& track);
    void noteFile(const Track& track);
    void fail(const Track& track, TagWriteFault fault, const QString& detail);

    WriteTagsParts m_parts;
    WriteTagsOrder m_order;
    TagImport m_import;
    FileLocator m_locator;
    KeptCovers m_covers;
    std::unique_ptr<Database> m_database;
    QStringList m_waiting;
    QHash<QString, int> m_tries;
    qint64 m_done = 0;
    qint64 m_total = 0;
    QString m_file;
    bool m_over = false;
    WriteTagsReport m_report;
};

} // namespace melovane
