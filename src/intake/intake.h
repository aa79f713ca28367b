#pragma once

#include "intake/folder_walk.h"
#include "intake/intake_library.h"
#include "intake/intake_report.h"
#include "intake/moved_rows.h"
#include "intake/read_ahead.h"
#include "intake/tag_import.h"
#include "platform/system/files.h"
#include "store/file_locator.h"
#include "store/kept_sounds.h"

#include <QHash>
#include <QStringList>

#include <chrono>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace melovane {

class ConfigObjects;
class DbError;

/// What an import needs of the system. All outlive it. The reader is used on a second thread.
struct IntakeParts
{
    DBEngine& engine;
    const Files& files;
    const TagReader& reader;
    const Clock& clock;
    const ConfigObjects& texts;
    QString dataFolder; ///< of `ChangeDir.conf`
    /// Both or none: the sound of what is imported is kept, and known again.
    const AudioIdentity* audio = nullptr;
    Files* soundFiles = nullptr;
};

struct IntakeOrder
{
    IntakeMode mode = IntakeMode::NewFiles;
    QString database;    ///< full path of the database file
    QStringList folders; ///< to import from; not used for changed files
    int id3v2Tags = 1;   ///< the setting of that name
};

/// How far an import is.
struct IntakeProgress
{
    bool listing = true; ///< files are being looked for; total is not yet known
    qint64 done = 0;
    qint64 total = 0;
    QString file; ///< the one last looked at
};

/// One import, done in steps so that a window stays alive and can cancel between them.
///
/// New files: a file whose folder and name the library has is left alone (if it was marked as
/// missing, the mark goes). A file whose tag holds the identifier of a row is that row's new place
/// when the row's own file is gone, and a duplicate otherwise; tracks on discs count as there. A
/// file without one is the new place of a row whose own file is gone and that MovedRows names. A
/// folder is the same under every name that leads to it, see LibraryPlaces. All others become new
/// rows. Changed files: rows whose file differs in size or date are read again.
///
/// The file of a row is there as well when only FileLocator finds it: in a folder that
/// `ChangeDir.conf` names, or under a name that the disk spells otherwise. Such a row keeps the
/// place that it has stored.
///
/// Rows are committed in portions. Files that are refused are listed in the report and nothing
/// about them is written. A failing database ends the import: the open portion is undone and its
/// files are listed as refused.
class Intake
{
public:
    Intake(const IntakeParts& parts, IntakeOrder order);
    ~Intake();

    /// Works for about that long. False when there is nothing left to do; never throws.
    bool step(std::chrono::milliseconds budget);

    /// Commits what is read so far; the next step() gives false.
    void cancel();

    [[nodiscard]] const IntakeProgress& progress() const { return m_progress; }

    /// Final when step() gave false.
    [[nodiscard]] const IntakeReport& report() const { return m_report; }

private:
    enum class State
    {
        Opening,
        Listing,
        Reading,
        Finishing,
        Done
    };

    /// Counts and paths of the portion that is not yet committed.
    struct Portion
    {
        int added = 0;
        int changed = 0;
        int moved = 0;
        int returned = 0;
        QStringList paths;
    };

    void work(std::chrono::steady_clock::time_point deadline);
    void open();
    void list();
    void listFiles();
    void findFiles();
    void listRow();
    void takeFound(const FoundFile& file);
    /// Counts the file of a row as known, or takes the mark away if the row counted as missing.
    void takeKnown(const QString& fid, int del, const QString& path);
    /// Where the file of a row is today; nothing when it is nowhere.
    [[nodiscard]] std::optional<FoundFile> fileOf(const QString& folder, const QString& name);
    void readSome(std::chrono::steady_clock::time_point deadline);
    void startBatch();
    void write(ReadFile& file);
    void writeNew(const ReadFile& read);
    /// Whether the file is the new place of a row whose own file is gone; the row is written then.
    [[nodiscard]] bool followMoved(const ReadFile& read, const ImportedTrack& track);
    /// Whether a row that is on no disc has lost its file.
    [[nodiscard]] bool isGone(const QString& fid);
    void keepSound(const QString& fid, const ReadFile& read);
    void writeChanged(const ReadFile& file);
    /// A file whose tag holds the identifier of that row.
    void meetRow(const StoredPlace& row, const FoundFile& file, const ImportedTrack& track);
    void finish();
    void commit();
    void note(int Portion::*count, const QString& path);
    void refuse(const QString& path, int code, const QString& detail);
    void fail(const DbError& error);
    void end();

    IntakeParts m_parts;
    IntakeOrder m_order;
    State m_state = State::Opening;
    IntakeProgress m_progress;
    IntakeReport m_report;
    Portion m_portion;
    TagImport m_import;
    FileLocator m_locator;
    std::unique_ptr<IntakeLibrary> m_library;
    std::unique_ptr<MovedRows> m_moved; ///< for new files
    std::optional<KeptSounds> m_sounds;
    Skipped m_unreached; ///< what the walk has left out
    std::unique_ptr<FolderWalk> m_walk;
    std::vector<FoundFile> m_found;                    ///< wait for the rows of their folder
    QString m_knownFolder;                             ///< whose rows m_known holds
    QHash<QString, StoredPlace> m_known;               ///< by file name
    QHash<std::pair<quint64, quint64>, QString> m_met; ///< path by identity of the file
    std::vector<PendingFile> m_pending;
    size_t m_nextPending = 0;
    std::vector<ReadFile> m_ready;
    size_t m_nextReady = 0;
    ReadAhead m_readAhead;
};

} // namespace melovane
