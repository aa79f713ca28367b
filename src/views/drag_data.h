#pragma once

#include "platform/controls/grid_control.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace melovane {

class Clipboard;
class Recordset;

/// What the ids of a drag text are. The prefixes are understood by siblings, too: keep.
enum class DragKind
{
    Plid,     ///< "DRAG_TYP_PLID:", entries of a playlist
    FidMp3db, ///< "DRAG_TYP_FID_MP3DB:", tracks of the library
};

/// In which order selected rows are dragged.
enum class DragOrder
{
    AsSelected,
    ByPosition,
    ById, ///< ids compared as numbers
};

/// What the text of a drag begins with, and all of it when it carries nothing.
[[nodiscard]] QString dragPrefix(DragKind kind);

/// Prefix and ids joined by commas; empty without an id.
[[nodiscard]] QString dragText(DragKind kind, const QStringList& ids);

/// The drag of the selected rows. Without a selection the current row is selected first, so that a
/// row can be dragged as it stands. Tracks that are flagged as deleted or missing are left out; the
/// result is empty when nothing is left.
///
/// \param rows   a clone over the rows of the grid; its place is moved. A row that cannot be read
///               is left out
/// \param cached ids that are taken in place of the selection when not empty
/// \param locate gives the place of a stored file (Path + DName) on this machine, empty when it is
///        nowhere: that one is left out. Asked when the files are; empty for a drag without files
[[nodiscard]] DragContent
GetDragData(DragKind kind,
            GridControl& grid,
            Recordset& rows,
            DragOrder order,
            const QString& cached = {},
            const std::function<QString(const QString& file)>& locate = {});

/// Copies the text of the rows; rows that carry nothing leave the prefix alone, so that the next
/// paste does not insert what was copied before. Without a selected row the clipboard stays.
void copyDrag(DragKind kind, const DragContent& content, GridControl& grid, Clipboard& clipboard);

} // namespace melovane
