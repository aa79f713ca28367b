#include "care/find_again.h"

#include "care/missing_list.h"
#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/media/audio_identity.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "platform/system/text_file.h"
#include "platform/system/worker.h"
#include "store/change_dir.h"

#include <algorithm>
#include <map>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

/// What one work on the other thread reads and gives. The window's thread touches it before and
/// behind that work only, but for the atomics.
struct FindAgain::Job
{
    std::atomic<bool> isCancelled = false;
    std::atomic<int> met = 0;
    std::atomic<int> compared = 0;
    std::vector<MissingTrack> tracks;
    QSet<QString> folders; ///< of the library
    std::vector<FoundFile> files;
    QSet<QString> taken;
    std::vector<FoundRule> rules;
    QString failure;
    std::function<std::unique_ptr<DBEngine>()> makeEngine;
    QString library;

    /// Reads the library on the other thread.
    void read(const std::function<void(Database& database)>& work)
    {
        try {
            const auto engine = makeEngine();
            work(*engine->OpenDatabase(library));
        } catch (const DbError& error) {
            failure = error.text();
        }
    }

    void lookUpMissing(const Files& disk, const QString& dataFolder);
    void lookUpKnown();
};

/// All missing tracks, and one rule without a new folder for each of their folders.
void FindAgain::Job::lookUpMissing(const Files& disk, const QString& dataFolder)
{
    QStringList known;
    read([&](Database& database) {
        known = missinglist::folders(database);
        tracks = missinglist::marked(database);
    });
    folders = QSet<QString>(known.cbegin(), known.cend());
    // The library is let go meanwhile: a disk may take long to answer.
    const QStringList gone = missinglist::gone(disk, dataFolder, known);
    tracks = missinglist::stillMissing(disk, dataFolder, std::move(tracks), gone, isCancelled);
    QSet<QString> marked;
    for (const MissingTrack& track : tracks) {
        marked.insert(track.fid);
    }
    const QSet<QString> lost(gone.cbegin(), gone.cend());
    read([&](Database& database) {
        for (MissingTrack& track : missinglist::rowsOf(database, gone)) {
            // The statement takes folders that differ in letter case; on disk they are others.
            if (!marked.contains(track.fid) && lost.contains(track.folder)) {
                tracks.push_back(std::move(track));
            }
        }
    });
    std::map<QString, FoundRule> byFolder;
    for (size_t i = 0; i < tracks.size(); ++i) {
        FoundRule& rule = byFolder[tracks[i].folder];
        rule.oldFolder = tracks[i].folder;
        rule.tracks.emplace_back().track = int(i);
    }
    for (auto& [folder, rule] : byFolder) {
        rules.push_back(std::move(rule));
    }
}

/// Which of the files the library has already.
void FindAgain::Job::lookUpKnown()
{
    read([&](Database& database) {
        QString asked;
        for (const FoundFile& file : files) {
            if (file.folder == asked || !folders.contains(file.folder)) {
                continue;
            }
            asked = file.folder;
            const auto rows = database.OpenRecordset(
                u"select Path, DName from db_all where Path="_s + sql::text(asked));
            for (; !rows->Eof(); rows->MoveNext()) {
                taken.insert(rows->value(0).toText() + rows->value(1).toText());
            }
        }
    });
}

FindAgain::FindAgain(Parts parts)
    : m_parts(std::move(parts))
{}

FindAgain::~FindAgain()
{
    if (m_job) {
        m_job->isCancelled = true;
    }
}

std::shared_ptr<FindAgain::Job> FindAgain::begin(State state)
{
    m_job = std::make_shared<Job>();
    m_job->makeEngine = m_parts.makeEngine;
    m_job->library = m_parts.settings.DbName();
    m_failure.clear();
    m_state = state;
    if (changed) {
        changed();
    }
    return m_job;
}

void FindAgain::run(const std::shared_ptr<Job>& job,
                    const std::function<void()>& work,
                    const std::function<void()>& done)
{
    // Behind its end this object has nobody left who waits for the work.
    m_parts.worker.run([job, work] { work(); },
                       [job, done] {
                           if (!job->isCancelled) {
                               done();
                           }
                       });
}

void FindAgain::finish()
{
    m_job.reset();
    m_state = State::Ready;
    if (changed) {
        changed();
    }
}

void FindAgain::cancel()
{
    if (m_job) {
        m_job->isCancelled = true;
        finish();
    }
}

std::pair<int, int> FindAgain::progress() const
{
    return m_job ? std::pair(int(m_job->met), int(m_job->compared)) : std::pair(0, 0);
}

void FindAgain::load()
{
    m_tracks.clear();
    m_rules.clear();
    m_searched.clear();
    m_given.clear();
    const auto job = begin(State::Loading);
    Job* const there = job.get();
    run(
        job,
        [there, &files = m_parts.searchFiles, folder = m_parts.dataFolder] {
            there->lookUpMissing(files, folder);
        },
        [this, job] {
            m_tracks = std::move(job->tracks);
            m_folders = std::move(job->folders);
            m_rules = std::move(job->rules);
            m_failure = job->failure;
            finish();
        });
}

void FindAgain::search(const QString& folder)
{
    if (m_state == State::Ready && !m_searched.contains(folder)) {
        m_searched.append(folder);
    }
    start();
}

void FindAgain::addRule(const QString& oldFolder, const QString& newFolder)
{
    if (m_state == State::Ready) {
        m_given.insert(m_given.begin(), {oldFolder, path::withSeparator(newFolder)});
        search(newFolder);
    }
}

void FindAgain::showFile(int track, const QString& file)
{
    const MissingTrack& shown = m_tracks[size_t(track)];
    const QString folder = path::withSeparator(path::parent(file));
    const FolderPair pair = FolderPair::of(shown.folder, folder);
    addRule(pair.oldFolder, pair.newFolder);
}

void FindAgain::start()
{
    if (m_state != State::Ready || m_searched.isEmpty()) {
        return;
    }
    const auto job = begin(State::Searching);
    Job* const there = job.get();
    job->tracks = m_tracks;
    job->folders = m_folders;
    const auto work = [there, &files = m_parts.searchFiles, roots = m_searched,
                       &reader = m_parts.reader, &audio = m_parts.audio, given = m_given,
                       kept = m_parts.kept] {
        Skipped skipped;
        FolderWalk folders(files, roots, skipped);
        for (auto some = folders.next(); some && !there->isCancelled; some = folders.next()) {
            there->met += int(some->size());
            std::move(some->begin(), some->end(), std::back_inserter(there->files));
        }
        there->lookUpKnown();
        there->rules = findRules({.tracks = there->tracks,
                                  .files = there->files,
                                  .taken = there->taken,
                                  .given = given,
                                  .reader = reader,
                                  .audio = audio,
                                  .kept = kept,
                                  .done = there->compared,
                                  .isCancelled = there->isCancelled});
    };
    run(job, work, [this, job] {
        m_failure = job->failure;
        if (m_failure.isEmpty()) {
            m_rules = std::move(job->rules);
        }
        finish();
    });
}

void FindAgain::chooseRule(int rule, bool on)
{
    m_rules[size_t(rule)].isChosen = on;
}

void FindAgain::chooseTrack(int rule, int track, bool on)
{
    FoundRule& home = m_rules[size_t(rule)];
    home.tracks[size_t(track)].isChosen = on;
    home.isChosen = home.isChosen || on;
}

int FindAgain::foundCount() const
{
    int count = 0;
    for (const FoundRule& rule : m_rules) {
        count += rule.foundCount();
    }
    return count;
}

int FindAgain::chosenCount() const
{
    int count = 0;
    for (const FoundRule& rule : m_rules) {
        count += rule.isChosen ? rule.chosenCount() : 0;
    }
    return count;
}

std::vector<RelinkOrder> FindAgain::orders() const
{
    std::vector<RelinkOrder> orders;
    for (const FoundRule& rule : m_rules) {
        for (const FoundTrack& track : rule.tracks) {
            if (rule.isChosen && track.isChosen && track.isFound()) {
                const MissingTrack& missing = m_tracks[size_t(track.track)];
                orders.push_back({missing.fid, missing.place(), track.folder, track.name});
            }
        }
    }
    return orders;
}

bool FindAgain::remember() const
{
    std::vector<changedir::Record> records;
    for (const FoundRule& rule : m_rules) {
        if (rule.isChosen && rule.chosenCount() > 0) {
            records.push_back({changedir::kDir.toString(), rule.oldFolder, rule.newFolder});
        }
    }
    const QString file = path::join(m_parts.dataFolder, changedir::kFileName);
    try {
        const QString before =
            m_parts.files.fileExists(file) ? textfile::decode(m_parts.files.read(file)) : QString();
        const QString after = changedir::withMappings(before, records);
        if (after != before) {
            m_parts.files.writeWhole(file, after.toUtf8());
        }
        return true;
    } catch (const IoError&) {
        return false;
    }
}

FindAgain::Outcome FindAgain::apply(bool remember, const RelinkStep& goOn)
{
    Outcome outcome;
    const std::vector<RelinkOrder> all = orders();
    if (m_state != State::Ready || all.empty()) {
        return outcome;
    }
    const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
    outcome.rows = relink(*database, m_parts.history, m_parts.files, all, goOn);
    if (outcome.rows.isCancelled) {
        return outcome;
    }
    outcome.isRemembered = !remember || outcome.rows.moved == 0 || this->remember();
    load();
    return outcome;
}

} // namespace melovane
