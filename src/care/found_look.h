#pragma once

#include "care/find_again.h"
#include "platform/controls/grid_control.h"
#include "platform/controls/grid_source.h"

namespace melovane {

class ConfigObjects;

/// Columns of the two grids; the tick stands in front.
namespace foundcolumn {
inline constexpr int kTick = 0;
inline constexpr int kOldFolder = 1;
inline constexpr int kArrow = 2;
inline constexpr int kNewFolder = 3;
inline constexpr int kHits = 4;
inline constexpr int kRules = 5; ///< their number
inline constexpr int kTitle = 1;
inline constexpr int kPlace = 2;
inline constexpr int kAgrees = 3;
inline constexpr int kTracks = 4; ///< their number
} // namespace foundcolumn

/// The rules as rows of a grid, and how they look.
class RuleRows : public GridSource, public GridLook
{
public:
    RuleRows(const FindAgain& find, const ConfigObjects& texts);

    [[nodiscard]] std::vector<GridColumn> columns() const;

    [[nodiscard]] qint64 rowCount() const override;

    [[nodiscard]] int columnCount() const override { return foundcolumn::kRules; }

    [[nodiscard]] QString columnName(int index) const override;
    [[nodiscard]] Value cell(qint64 row, int column) const override;
    [[nodiscard]] QString text(const QString& field, const Value& value) const override;
    [[nodiscard]] CellStyle style(const QString& field, const RowValues& row) const override;

    /// \param sameRows only their values are others
    void show(bool sameRows);

private:
    const FindAgain& m_find;
    const ConfigObjects& m_texts;
};

/// The tracks of one rule as rows of a grid, and how they look.
class FoundRows : public GridSource, public GridLook
{
public:
    FoundRows(const FindAgain& find, const ConfigObjects& texts);

    [[nodiscard]] std::vector<GridColumn> columns() const;

    [[nodiscard]] qint64 rowCount() const override;

    [[nodiscard]] int columnCount() const override { return foundcolumn::kTracks; }

    [[nodiscard]] QString columnName(int index) const override;
    [[nodiscard]] Value cell(qint64 row, int column) const override;
    [[nodiscard]] QString text(const QString& field, const Value& value) const override;
    [[nodiscard]] CellStyle style(const QString& field, const RowValues& row) const override;

    /// \param rule -1 for none \param sameRows only their values are others
    void show(int rule, bool sameRows);

    [[nodiscard]] int rule() const { return m_rule; }

    /// The track of a row in its rule; null outside the rows.
    [[nodiscard]] const FoundTrack* at(qint64 row) const;

private:
    const FindAgain& m_find;
    const ConfigObjects& m_texts;
    int m_rule = -1;
};

/// What a file has in common with its track, in the user's words: "Name, Länge, FID".
[[nodiscard]] QString evidenceText(const ConfigObjects& texts, const FoundTrack& track);

} // namespace melovane
