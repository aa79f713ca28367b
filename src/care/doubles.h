#pragma once

#include "care/double_groups.h"
#include "care/merge_tracks.h"
#include "care/recycle_run.h"

#include <QString>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace melovane {

class AudioIdentity;
class DBEngine;
class Files;
class GlobalSettings;
class ListHistory;
class MergeJournal;
class Worker;

/// Tracks that are there twice, as the user meets them: searching, which one stays, merging. Knows
/// no window.
class Doubles
{
public:
    struct Parts
    {
        DBEngine& engine;
        ListHistory& history;
        const GlobalSettings& settings;
        Files& files;
        const AudioIdentity& audio;
        Worker& worker;
        std::function<std::unique_ptr<DBEngine>()> makeEngine; ///< for the worker
        RecycleTools recycler;
    };

    explicit Doubles(Parts parts);
    /// Ends what goes on; its result is dropped, and files that wait to be moved are moved at the
    /// next start, see LeftMerges.
    ~Doubles();
    Doubles(const Doubles&) = delete;
    Doubles& operator=(const Doubles&) = delete;

    /// Called when the state or the groups are others; may be empty.
    std::function<void()> changed;

    /// Searches the whole library. \param kinds of DoubleKind, added
    void search(unsigned kinds);

    /// Ends what goes on; groups stay as they were, files that were moved stay moved, and the other
    /// ones stay where they are.
    void cancel();

    /// Whether a search, or the moving of files, goes on.
    [[nodiscard]] bool isWorking() const { return m_job != nullptr; }

    /// Files done, and of how many.
    [[nodiscard]] std::pair<int, int> progress() const;

    /// Why the last search has failed, in the engine's words; empty when it has not.
    [[nodiscard]] const QString& failure() const { return m_failure; }

    [[nodiscard]] const std::vector<DoubleGroup>& groups() const { return m_groups; }

    /// That track of a group stays, the others go. Does not call changed().
    void keep(int group, int track);
    /// Whether a group is merged or left as it is. Does not call changed().
    void choose(int group, bool on);

    /// Tracks that merge() would remove.
    [[nodiscard]] int goingCount() const;
    /// Tracks that stand in a group beside the one that stays.
    [[nodiscard]] int spareCount() const;

    /// Merges the chosen groups as one step that can be taken back, and forgets them. Files of
    /// removed tracks go to the recycle folder behind it when that is asked for, by the worker;
    /// taking the step back does not bring them.
    /// \throws DbError, and IoError when these files cannot be noted: nothing has changed then
    [[nodiscard]] MergeResult merge(bool recycle, const MergeStep& goOn = {});

private:
    struct Job;

    void run(const std::shared_ptr<Job>& job,
             const std::function<void()>& work,
             const std::function<void()>& done);
    void finish();
    void stop();
    [[nodiscard]] MergeResult
    mergeNoted(const std::vector<MergeOrder>& orders, const MergeStep& goOn, MergeJournal* journal);
    void moveFiles(const std::vector<RemovedTrack>& tracks, std::unique_ptr<MergeJournal> journal);

    Parts m_parts;
    QString m_failure;
    std::vector<DoubleGroup> m_groups;
    std::shared_ptr<Job> m_job;
};

} // namespace melovane
