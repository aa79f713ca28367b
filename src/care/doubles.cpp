#include "care/doubles.h"

#include "care/merge_journal.h"
#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/media/audio_identity.h"
#include "platform/system/worker.h"
#include "store/file_locator.h"
#include "store/kept_sounds.h"

namespace melovane {

/// What one work on the other thread reads and gives. The window's thread touches it before and
/// behind that work only, but for the progress and the moving of files.
struct Doubles::Job
{
    DoubleProgress progress;
    std::vector<DoubleGroup> groups;
    QString failure;
    std::unique_ptr<RecycleRun> recycling;
    std::unique_ptr<MergeJournal> journal; ///< of the files that are moved
};

Doubles::Doubles(Parts parts)
    : m_parts(std::move(parts))
{}

Doubles::~Doubles()
{
    changed = {};
    stop();
}

void Doubles::run(const std::shared_ptr<Job>& job,
                  const std::function<void()>& work,
                  const std::function<void()>& done)
{
    m_job = job;
    // Behind its end this object has nobody left who waits for the work.
    m_parts.worker.run([job, work] { work(); },
                       [job, done] {
                           if (!job->progress.isCancelled) {
                               done();
                           }
                       });
    if (changed) {
        changed();
    }
}

void Doubles::finish()
{
    m_job.reset();
    if (changed) {
        changed();
    }
}

void Doubles::stop()
{
    if (m_job) {
        m_job->progress.isCancelled = true;
        if (m_job->recycling) {
            m_job->recycling->end();
        }
        finish();
    }
}

void Doubles::cancel()
{
    if (m_job && m_job->journal) {
        m_job->journal->end();
    }
    stop();
}

std::pair<int, int> Doubles::progress() const
{
    if (m_job && m_job->recycling) {
        const RecycleRun::Progress moved = m_job->recycling->progress();
        return {moved.done, moved.whole};
    }
    return m_job ? std::pair(int(m_job->progress.done), int(m_job->progress.size))
                 : std::pair(0, 0);
}

void Doubles::search(unsigned kinds)
{
    if (m_job) {
        return;
    }
    m_failure.clear();
    const auto job = std::make_shared<Job>();
    Job* const there = job.get();
    run(
        job,
        [there, kinds, &audio = m_parts.audio, makeEngine = m_parts.makeEngine,
         makeFiles = m_parts.recycler.makeFiles, file = m_parts.settings.DbName(),
         folder = m_parts.recycler.dataFolder] {
            try {
                const auto engine = makeEngine();
                const auto files = makeFiles();
                const QHash<QString, AudioPrint> known = KeptSounds::read(*files, file);
                KeptSounds sounds(*files, file);
                FileLocator locator(*files, folder);
                there->groups =
                    findDoubles(*engine->OpenDatabase(file), audio, locator, kinds, there->progress,
                                [&](const QString& fid, const AudioPrint& print) {
                                    if (known.value(fid) != print) {
                                        sounds.add(fid, print);
                                    }
                                });
                sounds.write();
            } catch (const DbError& error) {
                there->failure = error.text();
            }
        },
        [this, job] {
            m_groups = std::move(job->groups);
            m_failure = job->failure;
            finish();
        });
}

void Doubles::keep(int group, int track)
{
    m_groups[size_t(group)].kept = track;
}

void Doubles::choose(int group, bool on)
{
    m_groups[size_t(group)].isChosen = on;
}

int Doubles::goingCount() const
{
    int count = 0;
    for (const DoubleGroup& group : m_groups) {
        count += group.isChosen ? int(group.tracks.size()) - 1 : 0;
    }
    return count;
}

int Doubles::spareCount() const
{
    int count = 0;
    for (const DoubleGroup& group : m_groups) {
        count += int(group.tracks.size()) - 1;
    }
    return count;
}

MergeResult Doubles::merge(bool recycle, const MergeStep& goOn)
{
    if (m_job) {
        return {};
    }
    std::vector<MergeOrder> orders;
    for (const DoubleGroup& group : m_groups) {
        if (!group.isChosen) {
            continue;
        }
        MergeOrder& order = orders.emplace_back();
        for (size_t i = 0; i < group.tracks.size(); ++i) {
            const MergedRow row{group.tracks[i].fid, group.tracks[i].place()};
            if (int(i) == group.kept) {
                order.kept = row;
            } else {
                order.others.push_back(row);
            }
        }
    }
    auto journal = std::make_unique<MergeJournal>(m_parts.files, m_parts.settings.DbName());
    MergeResult result = mergeNoted(orders, goOn, recycle ? journal.get() : nullptr);
    if (result.isCancelled) {
        return result;
    }
    std::erase_if(m_groups, [](const DoubleGroup& group) { return group.isChosen; });
    if (recycle && !result.files.empty()) {
        moveFiles(result.files, std::move(journal));
    } else if (changed) {
        changed();
    }
    return result;
}

/// \param journal of the files that are to move; null when they stay
MergeResult Doubles::mergeNoted(const std::vector<MergeOrder>& orders,
                                const MergeStep& goOn,
                                MergeJournal* journal)
{
    const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
    FileLocator locator(m_parts.files, m_parts.recycler.dataFolder);
    try {
        return mergeTracks(*database, m_parts.history, {m_parts.files, locator}, orders, goOn,
                           [&](const std::vector<RemovedTrack>& files) {
                               if (journal) {
                                   journal->begin(files, locator);
                               }
                           });
    } catch (const DbError&) {
        if (journal) {
            journal->end();
        }
        throw;
    }
}

void Doubles::moveFiles(const std::vector<RemovedTrack>& tracks,
                        std::unique_ptr<MergeJournal> journal)
{
    const auto job = std::make_shared<Job>();
    job->recycling =
        std::make_unique<RecycleRun>(m_parts.recycler, tracks, RecycleFolder::Reason::Deleted);
    job->journal = std::move(journal);
    run(
        job, [run = job->recycling.get()] { run->run(); },
        [this, there = job.get()] {
            there->journal->end();
            finish();
        });
}

} // namespace melovane
