#pragma once

#include "platform/controls/grid_control.h"
#include "tagbench/bench_tracks.h"
#include "tagbench/preview.h"
#include "views/track_look.h"

namespace melovane {

class ConfigObjects;

/// How the grid of the bench shows its tracks: what waits to be applied is marked, cell by cell and
/// with a pencil in front of the row.
class BenchLook : public GridLook
{
public:
    BenchLook(const BenchTracks& tracks, const ConfigObjects& texts, NoteColours colours);

    [[nodiscard]] QString text(const QString& field, const Value& value) const override;
    [[nodiscard]] CellStyle style(const QString& field, const RowValues& row) const override;

    /// The columns that the grid begins with.
    [[nodiscard]] std::vector<GridColumn> columns() const;

private:
    const BenchTracks& m_tracks;
    const ConfigObjects& m_texts;
    NoteColours m_colours;
};

/// What the user types into cells of the grid. File names are made by templates alone.
class BenchEditing : public GridEditing
{
public:
    explicit BenchEditing(BenchTracks& tracks);

    void setGenres(const QStringList& genres) { m_genres = genres; }

    [[nodiscard]] bool canEdit(qint64 row, const QString& field) const override;
    [[nodiscard]] QStringList choices(const QString& field) const override;
    bool commit(qint64 row, const QString& field, const QString& text) override;

private:
    BenchTracks& m_tracks;
    QStringList m_genres;
};

/// How a preview shows its rows.
class PreviewLook : public GridLook
{
public:
    /// \param ticks whether rows can be left out one by one, by a box in front
    PreviewLook(const PreviewRows& rows, const ConfigObjects& texts, bool ticks);

    [[nodiscard]] QString text(const QString& field, const Value& value) const override;
    [[nodiscard]] CellStyle style(const QString& field, const RowValues& row) const override;

private:
    const PreviewRows& m_rows;
    const ConfigObjects& m_texts;
    bool m_ticks;
};

} // namespace melovane
