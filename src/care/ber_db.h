#pragma once

#include "care/cleaning.h"
#include "care/recycle_run.h"

#include <QString>

#include <array>
#include <functional>
#include <memory>

namespace melovane {

class ConfigObjects;
class DBEngine;
class DbError;
class GlobalSettings;
class LiveWait;
class MessageLoop;
class Worker;

/// What the user sees of the cleaning.
struct BerDbView
{
    struct Box
    {
        bool isTicked = false;
        bool isEnabled = true;
        bool isDone = false;    ///< its step has run
        bool isRunning = false; ///< its step runs now
        QString note;           ///< what it would do, does or did
    };

    std::array<Box, kCleaningBoxes> boxes; ///< `checkBer`
    QString step;                          ///< what is being done, or how it ended
    int percent = 0;
    bool isRunning = false;
    bool mayRun = false; ///< `cmdOk` does something
};

/// The dialog of the cleaning.
class BerDbForm
{
public:
    virtual ~BerDbForm() = default;

    virtual void show(const BerDbView& view) = 0;
    virtual void close() = 0;
};

struct BerDbParts
{
    DBEngine& engine;
    const GlobalSettings& settings;
    const ConfigObjects& texts;
    const Clock& clock;
    MessageLoop& loop;
    LiveWait& wait;
    Worker& worker;
    std::function<std::unique_ptr<DBEngine>()> makeEngine; ///< for the worker
    RecycleTools recycler;
    /// Keeps the library as it is before a run; false when the user does not want to begin.
    std::function<bool()> backUp;
    std::function<void()> changed; ///< rows of the library are others now
    std::function<void()> rebuildTrees;
    std::function<QString(const DbError&)> failed; ///< logs it; what the user reads
};

/// `frmBerDB`, "Datenbereinigung": removes rows for good, and with them what hangs on them.
///
/// Steps of the lists that would write rows which are gone cannot be taken back any more: a run
/// that has removed something forgets them, and no other.
class frmBerDB
{
public:
    frmBerDB(BerDbParts parts, BerDbForm& form);
    ~frmBerDB();

    /// Shows the boxes and has what each would do counted beside the window.
    void Show();

    /// The user ticks or unticks a box. Box 4 is off as long as neither 0 nor 1 is ticked.
    void checkBer(int index, bool isTicked);

    /// Runs the ticked boxes in their order; each is unticked and off once its step has run. Quiet:
    /// a database that fails ends the run and is told in the dialog, and what was done stays.
    void cmdOk();

    /// Closes the dialog, or ends the run: loops over files stop, and the rows of files that were
    /// not all moved stay in the library. Steps without a loop over files are done all the same.
    void cmdAbbruch();

    [[nodiscard]] const BerDbView& view() const { return m_view; }

private:
    void count();
    void runBoxes();
    [[nodiscard]] bool moveFiles(CleaningBox box);
    void removeTracks(CleaningBox box);
    void removeOrphans();
    void forgetRemoved();
    void finish(const QString& fault);
    void begin(CleaningBox box);
    void end(CleaningBox box, const QString& note);
    [[nodiscard]] bool turn();
    void setStep(const QString& text, qint64 done, qint64 whole);
    void showNotes();
    void show();
    [[nodiscard]] QString filesText(const QString& key, qint64 files) const;
    [[nodiscard]] BerDbView::Box& box(CleaningBox index);
    [[nodiscard]] bool isTicked(CleaningBox index);
    [[nodiscard]] std::unique_ptr<Database> open() const;

    BerDbParts m_parts;
    BerDbForm& m_form;
    BerDbView m_view;
    std::shared_ptr<CleaningCounts> m_counts; ///< null while it is counted
    std::shared_ptr<bool> m_alive;            ///< answers of the worker may come later than the end
    bool m_isCancelled = false;
    bool m_hasRemoved = false;
    RemovedRows m_removed; ///< of the present run
    int m_stepsDone = 0;
    int m_steps = 0; ///< of the present run
    int m_moved = 0; ///< files of the present run
};

} // namespace melovane
