#pragma once

#include "playlists/list_step.h"
#include "store/error_sink.h"

#include <QStringView>

#include <functional>
#include <optional>
#include <vector>

namespace melovane {

class Clock;
class Database;
class DBEngine;
class Files;
class GlobalSettings;

/// Name of the table of steps, in the side file and as a link in the main database: keep.
inline constexpr QStringView kHistoryTable = u"LIST_HISTORY";

/// The setting, section "Global", that switches the history off with 0.
inline constexpr QStringView kHistorySetting = u"List.History";

/// All that the user changed in lists, so that it can be undone and redone, also after a restart.
///
/// Stands in a side file beside the database, `<database>.undo.mdb`, which is made when the first
/// change needs it and may be deleted at any time. Lists keep the number of their entries and all
/// columns of the tables as every other program of the suite expects them; undoing writes the same
/// columns back.
///
/// A step and its record are one transaction over both files. When the program is killed, both are
/// there or both are gone, except between the commits of the two files, a few milliseconds: then
/// the change is there without its record, and an earlier step meets a list that it does not know
/// and asks. A record without its change cannot happen. A power cut may lose more of one file than
/// of the other; then, too, the lists are whole and a doubtful step asks.
class ListHistory
{
public:
    /// Steps kept; the oldest go first.
    static constexpr int kMaxSteps = 1000;
    /// Letters that all records may have together.
    static constexpr qint64 kMaxLetters = qint64{64} * 1024 * 1024;

    enum class Outcome
    {
        Done,
        Nothing,          ///< there is no step
        ChangedElsewhere, ///< nothing was written: ask the user, then call with Force::Yes
        Failed            ///< nothing was written; a step that can never be taken is forgotten
    };

    enum class Force
    {
        No,
        Yes ///< writes what the step knows over what others changed since
    };

    struct Result
    {
        Outcome outcome = Outcome::Nothing;
        ListStep step;             ///< the step that was meant
        std::vector<Pnid> lists;   ///< whose entries are others now
        std::vector<Plid> entries; ///< what changed, to be shown; see touchedEntries()
        QStringList tracks;        ///< whose fields are others now
        QStringList trees;         ///< that are out of date with them
    };

    /// \param sink learns of failures under the name "ListHistory"
    ListHistory(DBEngine& engine,
                Files& files,
                const Clock& clock,
                const GlobalSettings& settings,
                ErrorSink sink);

    /// Hears of a damaged side file that was made anew, with the path under which it is kept: the
    /// user's steps are gone, and he is told.
    void setBegunAnew(std::function<void(const QString& kept)> begunAnew)
    {
        m_begunAnew = std::move(begunAnew);
    }

    /// The step that undo() or redo() would take; nothing when there is none or the file cannot be
    /// read.
    [[nodiscard]] std::optional<ListStep> nextUndo() const;
    [[nodiscard]] std::optional<ListStep> nextRedo() const;

    /// What can be taken back, and done once more; told by words alone.
    struct NextSteps
    {
        std::optional<ListStep> undo;
        std::optional<ListStep> redo;
    };

    /// Both at once, with one look at the table and without what the steps change.
    [[nodiscard]] NextSteps nextSteps() const;

    /// Takes back the last step that still stands. \see Outcome
    Result undo(Force force = Force::No);

    /// Does the last step that was taken back once more; a new change ends this.
    Result redo(Force force = Force::No);

    /// Forgets all steps.
    void clear();

private:
    friend class ListEdit;

    enum class Direction
    {
        Undo,
        Redo
    };

    /// A step as it stands in the table. Marks are "list=mark" joined by ";".
    struct Record
    {
        qint64 id = 0;
        ListStep step;
        QString marksBefore;
        QString marksAfter;
        QString changes; ///< see deltaText()
    };

    [[nodiscard]] bool isOn() const;
    /// True when the side file is there and linked; makes what is missing. Not in a transaction.
    [[nodiscard]] bool prepare(Database& database);
    void makeSideFile(const QString& mainFile, const QString& sideFile);
    void link(const QString& mainFile, const QString& sideFile) const;
    /// True when the library is linked to the side file beside it. A library that was copied still
    /// leads to the file of the folder it came from: it is linked to its own, or to none when it
    /// brought none. Not in a transaction. \throws DbError
    [[nodiscard]] bool follow(Database& database) const;
    /// Writes a new step as the last one. \throws DbError
    void write(Database& database, const Record& record);
    void trim(Database& database);
    [[nodiscard]] static std::optional<Record> next(Database& database, Direction direction);
    [[nodiscard]] std::optional<ListStep> nextStep(Direction direction) const;
    Result take(Direction direction, Force force);
    [[nodiscard]] Outcome take(Database& database,
                               const Record& record,
                               Direction direction,
                               Force force,
                               Result& result);
    [[nodiscard]] Outcome drop(Database& database, const Record& record, const QString& why) const;

    DBEngine& m_engine;
    Files& m_files;
    const Clock& m_clock;
    const GlobalSettings& m_settings;
    ErrorSink m_sink;
    std::function<void(const QString& kept)> m_begunAnew;
};

} // namespace melovane
