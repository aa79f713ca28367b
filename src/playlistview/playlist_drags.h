#pragma once

#include "platform/controls/drop_target.h"
#include "platform/controls/grid_control.h"
#include "playlistview/open_list.h"
#include "playlistview/playlist_view_parts.h"

namespace melovane {

class GridRows;
class PlaylistEdits;

/// Selected rows of the playlist view, what is dragged of them, and what may be dropped there. All
/// of what it is made with outlives it.
class PlaylistDrags
{
public:
    PlaylistDrags(GridControl& grid,
                  GridRows& rows,
                  const OpenList& list,
                  PlaylistEdits& edits,
                  const PlaylistActions& actions);

    /// Selects all rows. The values of `field` joined by commas, kept as what the next drag
    /// carries; "null" collects nothing.
    [[nodiscard]] QString selectAll(const QString& field);

    /// Selects the rows from one end to the other; a start of -1 does nothing. The higher row
    /// becomes the anchor.
    void selectRange(qint64 start, qint64 stop);

    [[nodiscard]] qint64 anchor() const { return m_anchor; }

    /// The user has selected other rows.
    void forgetSelected() { m_selectedIds.clear(); }

    /// Another list is shown.
    void forgetAll();

    /// The selected rows as a drag; files only as far as they are there.
    [[nodiscard]] DragContent content();

    /// What a drop would do: entries of this list are moved, all else is copied, and a row never
    /// onto itself.
    [[nodiscard]] DropEffect effect(const DropOffer& offer);

    /// Does it. \throws DbError
    void drop(const DropOffer& offer);

private:
    [[nodiscard]] bool isOfThisList(const QString& dragText);
    [[nodiscard]] std::optional<Sid> target(const DropOffer& offer) const;

    GridControl& m_grid;
    GridRows& m_rows;
    const OpenList& m_list;
    PlaylistEdits& m_edits;
    const PlaylistActions& m_actions;
    qint64 m_anchor = -1;
    QString m_selectedIds;    ///< what the next drag carries in place of the selection
    QString m_draggedFid;     ///< track of the first row of the last drag
    QString m_checkedDrag;    ///< the drag text that m_checkedIsOwn is about
    int m_checkedReading = 0; ///< and the reading of the rows
    bool m_checkedIsOwn = false;
};

} // namespace melovane
