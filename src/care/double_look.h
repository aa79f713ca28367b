#pragma once

#include "care/doubles.h"
#include "platform/controls/grid_control.h"
#include "platform/controls/grid_source.h"

#include <optional>
#include <vector>

namespace melovane {

class ConfigObjects;

/// The groups as rows of a grid, track below track, and how they look.
class DoubleRows : public GridSource, public GridLook
{
public:
    enum Column
    {
        kState, ///< stays, goes, or is left
        kGroup,
        kTitle,
        kArtist,
        kFile,
        kLength,
        kRate,
        kLists,
        kPlays,
        kNote,
        kColumns ///< their number
    };

    DoubleRows(const Doubles& doubles, const ConfigObjects& texts);

    [[nodiscard]] std::vector<GridColumn> columns() const;

    [[nodiscard]] qint64 rowCount() const override { return qint64(m_places.size()); }

    [[nodiscard]] int columnCount() const override { return kColumns; }

    [[nodiscard]] QString columnName(int index) const override { return QString::number(index); }

    [[nodiscard]] Value cell(qint64 row, int column) const override;
    [[nodiscard]] QString text(const QString& field, const Value& value) const override;
    [[nodiscard]] CellStyle style(const QString& field, const RowValues& row) const override;

    /// The groups are others.
    void show();

    /// Which track stays is another.
    void showChoice() { emit cellsChanged(); }

    struct Place
    {
        int group = 0;
        int track = 0; ///< of the group
    };

    /// Nothing outside the rows.
    [[nodiscard]] std::optional<Place> at(qint64 row) const;

private:
    const Doubles& m_doubles;
    const ConfigObjects& m_texts;
    std::vector<Place> m_places;
};

} // namespace melovane
