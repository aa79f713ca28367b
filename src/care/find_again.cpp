#include "care/find_again.h"

#include "care/missing_list.h"
#include "config/global_settings.h"
#include "platform/db/database.h"
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
    std::atomic<int> read = 0;
    std::vector<MissingTrack> tracks;
    QStringList folders;
    QStringList gone;
    std::vector<FoundFile> files;
    QSet<QString> taken;
    std::vector<FoundRule> rules;
};

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
    return m_job ? std::pair(int(m_job->met), int(m_job->read)) : std::pair(0, 0);
}

void FindAgain::load()
{
    const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
    const QStringList folders = missinglist::folders(*database);
    m_folders = QSet<QString>(folders.cbegin(), folders.cend());
    m_tracks.clear();
    m_rules.clear();
    m_searched.clear();
    m_given.clear();
    const auto job = begin(State::Loading);
    job->folders = folders;
    job->tracks = missinglist::marked(*database);
    Job* const there = job.get();
    run(
        job,
        [there, &files = m_parts.searchFiles, folder = m_parts.dataFolder] {
            there->gone = missinglist::gone(files, folder, there->folders);
            there->tracks = missinglist::stillMissing(files, folder, std::move(there->tracks),
                                                      there->gone, there->isCancelled);
        },
        [this, job] { takeGone(job); });
}

void FindAgain::takeGone(const std::shared_ptr<Job>& job)
{
    m_tracks = std::move(job->tracks);
    const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
    QSet<QString> known;
    for (const MissingTrack& track : m_tracks) {
        known.insert(track.fid);
    }
    const QSet<QString> gone(job->gone.cbegin(), job->gone.cend());
    for (MissingTrack& track : missinglist::rowsOf(*database, job->gone)) {
        // The statement takes folders that differ in letter case; on disk they are others.
        if (!known.contains(track.fid) && gone.contains(track.folder)) {
            m_tracks.push_back(std::move(track));
        }
    }
    showLost();
    finish();
}

void FindAgain::showLost()
{
    std::map<QString, FoundRule> lost;
    for (size_t i = 0; i < m_tracks.size(); ++i) {
        FoundRule& rule = lost[m_tracks[i].folder];
        rule.oldFolder = m_tracks[i].folder;
        rule.tracks.emplace_back().track = int(i);
    }
    m_rules.clear();
    for (auto& [folder, rule] : lost) {
        m_rules.push_back(std::move(rule));
    }
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
    const auto walk = [there, &files = m_parts.searchFiles, roots = m_searched] {
        Skipped skipped;
        FolderWalk folders(files, roots, skipped);
        for (auto some = folders.next(); some && !there->isCancelled; some = folders.next()) {
            there->met += int(some->size());
            std::move(some->begin(), some->end(), std::back_inserter(there->files));
        }
    };
    const auto compare = [there, &reader = m_parts.reader, &audio = m_parts.audio, given = m_given,
                          kept = m_parts.kept] {
        there->rules = findRules({.tracks = there->tracks,
                                  .files = there->files,
                                  .taken = there->taken,
                                  .given = given,
                                  .reader = reader,
                                  .audio = audio,
                                  .kept = kept,
                                  .done = there->read,
                                  .isCancelled = there->isCancelled});
    };
    run(job, walk, [this, job, compare] {
        takeKnown(*job);
        run(job, compare, [this, job] {
            m_rules = std::move(job->rules);
            finish();
        });
    });
}

/// Which of the files the library has already.
void FindAgain::takeKnown(Job& job)
{
    const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
    QString asked;
    for (const FoundFile& file : job.files) {
        if (file.folder == asked || !m_folders.contains(file.folder)) {
            continue;
        }
        asked = file.folder;
        const auto rows = database->OpenRecordset(u"select Path, DName from db_all where Path="_s +
                                                  sql::text(asked));
        for (; !rows->Eof(); rows->MoveNext()) {
            job.taken.insert(rows->value(0).toText() + rows->value(1).toText());
        }
    }
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
