#pragma once

#include "care/found_rules.h"
#include "care/relink.h"

#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace melovane {

class AudioIdentity;
class ConfigObjects;
class DBEngine;
class Files;
class GlobalSettings;
class ListHistory;
class TagReader;
class Worker;

/// Missing files found again, as the user meets it: what is missing, where he lets search, the
/// rules that come of it, applying them. Knows no window.
///
/// The worker reads the library and asks the disk; the thread of the window writes.
class FindAgain
{
public:
    struct Parts
    {
        DBEngine& engine;
        ListHistory& history;
        const GlobalSettings& settings;
        Files& files;             ///< of the window's thread
        const Files& searchFiles; ///< of the worker's thread alone
        const TagReader& reader;
        const AudioIdentity& audio;
        Worker& worker;
        std::function<std::unique_ptr<DBEngine>()> makeEngine; ///< for the worker
        QString dataFolder;                                    ///< of `ChangeDir.conf`
        /// The sound that was kept of a track; used on the worker's thread, may be empty.
        std::function<std::optional<AudioPrint>(const QString& fid)> kept = {};
    };

    enum class State
    {
        Loading,   ///< what is missing is being looked up
        Ready,     ///< nothing goes on
        Searching, ///< files are being looked for and compared
    };

    explicit FindAgain(Parts parts);
    /// Ends what goes on; its result is dropped.
    ~FindAgain();
    FindAgain(const FindAgain&) = delete;
    FindAgain& operator=(const FindAgain&) = delete;

    /// Called when the state or the rules are others; may be empty.
    std::function<void()> changed;

    /// Looks up what is missing; forgets what was found.
    void load();

    /// Looks for all missing files below a folder, in addition to the folders that were searched
    /// before. Only when nothing goes on.
    void search(const QString& folder);

    /// The user has shown that all below one folder lies below another now.
    void addRule(const QString& oldFolder, const QString& newFolder);

    /// The user has shown where the file of one missing track is: what the two places do not have
    /// in common is a rule for all.
    void showFile(int track, const QString& file);

    /// Ends what goes on; the rules stay as they were.
    void cancel();

    [[nodiscard]] State state() const { return m_state; }

    /// Why the last load() or search() has failed, in the engine's words; empty when it has not.
    [[nodiscard]] const QString& failure() const { return m_failure; }

    [[nodiscard]] const std::vector<MissingTrack>& tracks() const { return m_tracks; }

    /// Behind load() one for each folder, without a new one.
    [[nodiscard]] const std::vector<FoundRule>& rules() const { return m_rules; }

    /// Files met and files read of a search that goes on.
    [[nodiscard]] std::pair<int, int> progress() const;

    /// Neither calls changed().
    void chooseRule(int rule, bool on);
    /// A track that was found but does not agree well enough is taken only when it is chosen here.
    void chooseTrack(int rule, int track, bool on);

    [[nodiscard]] int foundCount() const;
    /// Tracks that apply() would give a new place.
    [[nodiscard]] int chosenCount() const;

    struct Outcome
    {
        RelinkResult rows;
        bool isRemembered = true; ///< false when `ChangeDir.conf` could not be written
    };

    /// Writes the chosen ones as one step that can be taken back, and forgets them.
    /// \param remember also puts the rules into `ChangeDir.conf`, for lists and programs that know
    ///     the old places \throws DbError, and nothing is written
    [[nodiscard]] Outcome apply(bool remember, const RelinkStep& goOn = {});

private:
    struct Job;

    [[nodiscard]] std::shared_ptr<Job> begin(State state);
    void run(const std::shared_ptr<Job>& job,
             const std::function<void()>& work,
             const std::function<void()>& done);
    void start();
    void finish();
    [[nodiscard]] std::vector<RelinkOrder> orders() const;
    [[nodiscard]] bool remember() const;

    Parts m_parts;
    State m_state = State::Ready;
    QString m_failure;
    std::vector<MissingTrack> m_tracks;
    QSet<QString> m_folders; ///< of the library
    QStringList m_searched;
    std::vector<std::pair<QString, QString>> m_given;
    std::vector<FoundRule> m_rules;
    std::shared_ptr<Job> m_job;
};

} // namespace melovane
