#pragma once

#include "platform/controls/grid_control.h"
#include "platform/db/data_control.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace melovane {

class Clock;
class ConfigObjects;
class GlobalSettings;
class PendingJobs;

/// What the user changes in the rows of the library grid.
///
/// Works on the rows of a data control; nothing is reported, a row that cannot be written stays as
/// it was. One action on many rows is one transaction.
class TrackEdits : public GridEditing
{
public:
    /// \param changed called behind each change of a track with its FID
    /// \param failed called with the reason when a cell was not written
    TrackEdits(DataControl& rows,
               PendingJobs& jobs,
               const GlobalSettings& settings,
               const ConfigObjects& texts,
               const Clock& clock,
               std::function<void(const QString& fid)> changed,
               std::function<void(const QString& text)> failed);

    /// Every column but "Play" and the key, while `GridSwapEditPlay` is 0 and the rows can be
    /// written.
    [[nodiscard]] bool canEdit(qint64 row, const QString& field) const override;

    /// The names of the genres for the genre column.
    [[nodiscard]] QStringList choices(const QString& field) const override;

    /// Writes a cell and enters the track for its tags, both or nothing. In "Note", "BPM" and
    /// "Track" a text that reads as 0, as one without a number does, empties the cell; "Note" takes
    /// 1 to 5 besides and refuses any other, which is told. A changed artist, album or genre marks
    /// its tree.
    void commit(qint64 row, const QString& field, const QString& text) override;

    void setGenres(const QStringList& names) { m_genres = names; }

    /// Gives a row a mark from 1, the best, to 5; 0 takes it away. Other numbers do nothing.
    void rate(qint64 row, int digit);

    /// Marks rows as deleted or takes the mark away: `DEL` 0, 2 and 3 become -1, -1 becomes 0,
    /// others stay, null too. Rows are never removed.
    void toggleDelete(const std::vector<RowRange>& rows);

    /// Makes a track a favourite since now, or no more.
    void toggleFavorit(qint64 row);

    /// Appends the rows to TEMP_MP3Edit for the tag tool.
    void FillTempMp3EditTable(const std::vector<RowRange>& rows);

private:
    [[nodiscard]] QString fidOf(qint64 row) const;
    /// \param tagsOf track that is entered for its tags with it; empty enters none
    bool write(qint64 row, QStringView field, const Value& value, const QString& tagsOf);

    DataControl& m_rows;
    PendingJobs& m_jobs;
    const GlobalSettings& m_settings;
    const ConfigObjects& m_texts;
    const Clock& m_clock;
    std::function<void(const QString& fid)> m_changed;
    std::function<void(const QString& text)> m_failed;
    QStringList m_genres;
};

} // namespace melovane
