#pragma once

#include "platform/controls/grid_control.h"
#include "platform/db/data_control.h"
#include "store/track_writing.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace melovane {

class Clock;
class ConfigObjects;
class EventGuard;
class GlobalSettings;
class ListHistory;
enum class ListAction;
class PendingJobs;

/// What the user changes in the rows of the library grid.
///
/// Works on the rows of a data control. One action on many rows is one transaction and one step
/// that can be taken back; one that fails leaves them all as they were, which the guard tells.
class TrackEdits : public GridEditing
{
public:
    /// What it speaks to; all of it outlives it.
    struct Parts
    {
        DataControl& rows;
        PendingJobs& jobs;
        ListHistory& history;
        const GlobalSettings& settings;
        const ConfigObjects& texts;
        const Clock& clock;
        const EventGuard& guard;
        std::function<void(const QString& fid)> changed;  ///< behind each change of a track
        std::function<void(const QString& text)> refused; ///< why a typed text was not taken
    };

    explicit TrackEdits(Parts parts);

    /// Every column but "Play" and the key, while `GridSwapEditPlay` is 0 and the rows can be
    /// written.
    [[nodiscard]] bool canEdit(qint64 row, const QString& field) const override;

    /// The names of the genres for the genre column.
    [[nodiscard]] QStringList choices(const QString& field) const override;

    /// Writes a cell and enters the track for its tags, both or nothing. In "Note", "BPM" and
    /// "Track" a text that reads as 0, as one without a number does, empties the cell; "Note" takes
    /// 1 to 5 besides and refuses any other, which is told. A changed artist, album or genre marks
    /// its tree.
    bool commit(qint64 row, const QString& field, const QString& text) override;

    void setGenres(const QStringList& names) { m_genres = names; }

    /// Gives a row a mark from 1, the best, to 5; 0 takes it away. Other numbers do nothing.
    void rate(qint64 row, int digit);

    /// Marks rows as deleted or takes the mark away: `DEL` 0, 2 and 3 become -1, -1 becomes 0,
    /// others stay, null too. Rows are never removed.
    void toggleDelete(const std::vector<RowRange>& rows);

    /// Makes a track a favourite since now, or no more.
    void toggleFavorit(qint64 row);

    /// Appends the rows to TEMP_MP3Edit for the tag tool; after a failure it opens with what stood
    /// there before.
    void FillTempMp3EditTable(const std::vector<RowRange>& rows);

private:
    [[nodiscard]] QString fidOf(qint64 row) const;
    bool write(ListAction action, qint64 row, const QString& column, const Value& value);

    Parts m_parts;
    QStringList m_genres;
};

} // namespace melovane
