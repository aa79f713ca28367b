#pragma once

#include "platform/controls/grid_control.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace melovane {

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

/// Prefix and ids joined by commas; empty without an id.
[[nodiscard]] QString dragText(DragKind kind, const QStringList& ids);

/// The drag of the selected rows. Without a selection the current row is selected first, so that a
/// row can be dragged as it stands. Tracks that are flagged as deleted or missing are left out; the
/// result is empty when nothing is left.
///
/// \param rows   a clone over the rows of the grid; its place is moved. A row that cannot be read
///               is left out
/// \param cached ids that are taken in place of the selection when not empty
/// Files are Path + DName as they are stored.
[[nodiscard]] DragContent GetDragData(DragKind kind,
                                      GridControl& grid,
                                      Recordset& rows,
                                      DragOrder order,
                                      const QString& cached = {});

/// Where the files of a drag lie on this machine; those that are nowhere are left out.
/// \param locate gives the place of a stored file, empty when it is not there
[[nodiscard]] QStringList foundFiles(const QStringList& files,
                                     const std::function<QString(const QString& file)>& locate);

} // namespace melovane
