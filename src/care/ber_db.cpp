#include "care/ber_db.h"

#include "config/config_objects.h"
#include "config/counted_text.h"
#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/system/live_wait.h"
#include "platform/system/timers.h"
#include "platform/system/worker.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Bytes of a megabyte as file managers count.
constexpr qint64 kMegabyte = 1'000'000;

constexpr CleaningBox kTrackBoxes[] = {CleaningBox::Deleted, CleaningBox::Damaged,
                                       CleaningBox::Missing};

} // namespace

frmBerDB::frmBerDB(BerDbParts parts, BerDbForm& form)
    : m_parts(std::move(parts))
    , m_form(form)
    , m_alive(std::make_shared<bool>(true))
{}

frmBerDB::~frmBerDB()
{
    *m_alive = false;
}

BerDbView::Box& frmBerDB::box(CleaningBox index)
{
    return m_view.boxes.at(size_t(index));
}

bool frmBerDB::isTicked(CleaningBox index)
{
    return box(index).isTicked;
}

std::unique_ptr<Database> frmBerDB::open() const
{
    return m_parts.engine.OpenDatabase(m_parts.settings.DbName());
}

void frmBerDB::Show()
{
    show();
    count();
}

/// Reading takes long where a library is large.
void frmBerDB::count()
{
    m_counts.reset();
    showNotes();
    const auto counts = std::make_shared<CleaningCounts>();
    const auto isRead = std::make_shared<bool>(false);
    m_parts.worker.run(
        [counts, isRead, makeEngine = m_parts.makeEngine, dbName = m_parts.settings.DbName(),
         &clock = m_parts.clock] {
            try {
                const std::unique_ptr<DBEngine> engine = makeEngine();
                const auto database = engine->OpenDatabase(dbName);
                *counts = Cleaning(*database, clock).count();
                *isRead = true;
            } catch (const DbError&) {
                // A note stays empty then; the run tells what is wrong.
            }
        },
        [this, counts, isRead, alive = m_alive] {
            if (*alive && *isRead) {
                m_counts = counts;
                showNotes();
            }
        });
}

QString frmBerDB::filesText(const QString& key, qint64 files) const
{
    qint64 bytes = 0;
    for (const size_t i : {size_t{0}, size_t{1}}) {
        bytes += m_view.boxes[i].isTicked ? m_counts->fileBytes[i] : 0;
    }
    return countedText(m_parts.texts, key, files, (bytes + kMegabyte - 1) / kMegabyte);
}

/// What boxes would do whose step has not run.
void frmBerDB::showNotes()
{
    for (size_t i = 0; i < m_view.boxes.size(); ++i) {
        BerDbView::Box& shown = m_view.boxes[i];
        if (shown.isDone) {
            continue;
        }
        if (!m_counts) {
            shown.note = m_parts.texts.text(u"care.clean.counting"_s);
        } else if (i < std::size(kTrackBoxes)) {
            shown.note = countedText(m_parts.texts, u"care.clean.tracks"_s, m_counts->tracks[i]);
        } else if (i == size_t(CleaningBox::Orphans)) {
            shown.note = countedText(m_parts.texts, u"care.clean.entries"_s, m_counts->entries) +
                         u", "_s +
                         countedText(m_parts.texts, u"care.clean.lists"_s, m_counts->lists);
        } else {
            qint64 files = 0;
            for (const size_t moved : {size_t{0}, size_t{1}}) {
                files += m_view.boxes[moved].isTicked ? m_counts->files[moved] : 0;
            }
            shown.note = filesText(u"care.clean.files"_s, files);
        }
    }
    show();
}

void frmBerDB::show()
{
    const bool mayMove = isTicked(CleaningBox::Deleted) || isTicked(CleaningBox::Damaged);
    m_view.mayRun = false;
    for (size_t i = 0; i < m_view.boxes.size(); ++i) {
        BerDbView::Box& shown = m_view.boxes[i];
        const bool isRecycle = i == size_t(CleaningBox::Recycle);
        shown.isEnabled = !shown.isDone && !m_view.isRunning && (!isRecycle || mayMove);
        m_view.mayRun = m_view.mayRun || (shown.isTicked && !isRecycle && !m_view.isRunning);
    }
    m_form.show(m_view);
}

void frmBerDB::checkBer(int index, bool isTicked)
{
    BerDbView::Box& ticked = m_view.boxes.at(size_t(index));
    if (m_view.isRunning || ticked.isDone) {
        return;
    }
    ticked.isTicked = isTicked;
    showNotes();
}

void frmBerDB::cmdAbbruch()
{
    if (m_view.isRunning) {
        m_isCancelled = true;
    } else {
        m_form.close();
    }
}

void frmBerDB::setStep(const QString& text, qint64 done, qint64 whole)
{
    m_view.step = text;
    const double part = whole > 0 ? double(done) / double(whole) : 0;
    m_view.percent = int(100 * (m_stepsDone + part) / std::max(m_steps, 1));
    show();
}

/// Gives the user his turn; false when he has cancelled.
bool frmBerDB::turn()
{
    m_parts.loop.turn();
    // Another program may have been given the library meanwhile: an open connection would not know.
    static_cast<void>(open());
    return !m_isCancelled;
}

void frmBerDB::begin(CleaningBox index)
{
    box(index).isRunning = true;
    setStep(m_parts.texts.text(u"care.clean.step"_s, m_stepsDone + 1, m_steps,
                               m_parts.texts.text(u"chBerDB-%1"_s.arg(int(index)))),
            0, 1);
    static_cast<void>(turn());
}

void frmBerDB::end(CleaningBox index, const QString& note)
{
    BerDbView::Box& done = box(index);
    done.isRunning = false;
    done.isTicked = false;
    done.isDone = true;
    done.note = note;
    show();
}

void frmBerDB::cmdOk()
{
    if (!m_view.mayRun || m_view.isRunning) {
        return;
    }
    m_view.isRunning = true;
    m_isCancelled = false;
    m_hasRemoved = false;
    m_removed = {};
    m_stepsDone = 0;
    m_moved = 0;
    m_steps = int(std::count_if(m_view.boxes.begin(), m_view.boxes.end() - 1,
                                [](const BerDbView::Box& shown) { return shown.isTicked; }));
    show();
    if (!m_parts.backUp()) {
        m_isCancelled = true;
        finish({});
        return;
    }
    QString fault;
    try {
        runBoxes();
    } catch (const DbError& error) {
        fault = m_parts.failed(error);
    }
    try {
        forgetRemoved();
    } catch (const DbError& error) {
        fault = fault.isEmpty() ? m_parts.failed(error) : fault;
    }
    finish(fault);
}

void frmBerDB::runBoxes()
{
    const bool moves = box(CleaningBox::Recycle).isTicked &&
                       (isTicked(CleaningBox::Deleted) || isTicked(CleaningBox::Damaged));
    bool hasMovedAll = true;
    for (const CleaningBox index : kTrackBoxes) {
        if (!isTicked(index)) {
            continue;
        }
        begin(index);
        const bool isMissing = index == CleaningBox::Missing; // their files are gone
        if (!moves || isMissing || moveFiles(index)) {
            removeTracks(index);
        } else {
            hasMovedAll = false;
            box(index).isRunning = false;
        }
        ++m_stepsDone;
    }
    if (moves && hasMovedAll) {
        end(CleaningBox::Recycle, countedText(m_parts.texts, u"care.clean.moved"_s, m_moved));
    }
    if (isTicked(CleaningBox::Orphans)) {
        begin(CleaningBox::Orphans);
        removeOrphans();
        ++m_stepsDone;
    }
}

/// False when the user has stopped it.
bool frmBerDB::moveFiles(CleaningBox index)
{
    // It may outlive the wait, when a disk does not answer.
    const auto run = std::make_shared<RecycleRun>(
        m_parts.recycler, tracksToRemove(*open(), Cleaning::condition(index), Dependencies::Go),
        index == CleaningBox::Damaged ? RecycleFolder::Reason::Damaged
                                      : RecycleFolder::Reason::Deleted);
    const auto goesOn = [&] {
        const RecycleRun::Progress now = run->progress();
        box(index).note = m_parts.texts.text(u"care.clean.moving"_s, now.done, now.whole);
        setStep(m_parts.texts.text(u"care.clean.step"_s, m_stepsDone + 1, m_steps,
                                   m_parts.texts.text(u"care.clean.file"_s, now.name)),
                now.done, now.whole);
        m_parts.loop.turn();
        if (m_isCancelled) {
            run->end();
        }
        return !m_isCancelled;
    };
    const bool isOver = m_parts.wait.run([run] { run->run(); }, goesOn);
    run->end();
    m_isCancelled = m_isCancelled || !isOver;
    const RecycleRun::Progress result = run->progress();
    m_moved += result.moved;
    return isOver && result.isOver;
}

void frmBerDB::removeTracks(CleaningBox index)
{
    const int removed = Cleaning(*open(), m_parts.clock).removeTracks(index);
    m_hasRemoved = m_hasRemoved || removed > 0;
    end(index, countedText(m_parts.texts, u"care.clean.removed"_s, removed));
}

void frmBerDB::removeOrphans()
{
    const auto database = open();
    const RemovedDependencies removed =
        Cleaning(*database, m_parts.clock).removeOrphans([this](qint64 done, qint64 whole) {
            setStep(m_view.step, done, whole);
            return turn();
        });
    m_hasRemoved = m_hasRemoved || removed.isAny();
    m_removed.entries = removed.entryKeys;
    m_removed.lists = removed.listKeys;
    end(CleaningBox::Orphans,
        m_parts.texts.text(u"care.clean.removed.all"_s,
                           countedText(m_parts.texts, u"care.clean.entries"_s, removed.entries),
                           countedText(m_parts.texts, u"care.clean.lists"_s, removed.lists)));
}

/// The list of what was removed goes last: a run that is killed leaves it to the next one.
void frmBerDB::forgetRemoved()
{
    const auto database = open();
    Cleaning cleaning(*database, m_parts.clock);
    m_removed.tracks = cleaning.removedTracks();
    forgetSteps(*database, m_removed, [this] { static_cast<void>(turn()); });
    cleaning.forgetRemoved();
}

void frmBerDB::finish(const QString& fault)
{
    m_view.isRunning = false;
    for (BerDbView::Box& shown : m_view.boxes) {
        shown.isRunning = false;
    }
    m_view.step = !fault.isEmpty() ? fault
                  : m_isCancelled  ? m_parts.texts.text(u"care.clean.cancelled"_s)
                                   : m_parts.texts.text(u"care.clean.done"_s);
    m_view.percent = fault.isEmpty() && !m_isCancelled ? 100 : m_view.percent;
    if (m_hasRemoved) {
        m_parts.changed();
        m_parts.rebuildTrees();
    }
    count();
}

} // namespace melovane
