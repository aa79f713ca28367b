#include "views/grid_reposition.h"

#include "platform/controls/grid_control.h"
#include "platform/db/data_control.h"
#include "platform/db/db_error.h"
#include "platform/db/recordset.h"

namespace melovane {

void TDBGIDReposition::StartPosition()
{
    m_position = m_grid.currentRow();
    m_fromTop = m_position - m_grid.firstVisibleRow();
}

void TDBGIDReposition::Reposition(bool last, qint64 offset)
{
    const qint64 count = m_rows.rowCount();
    const qint64 row = last ? count - 1 : m_position + offset;
    if ((last || m_position >= 0) && row >= 0 && row < count) {
        goTo(row);
    }
}

void TDBGIDReposition::goTo(qint64 row)
{
    try {
        m_rows.Recordset()->SetAbsolutePosition(row);
        m_grid.goToRow(row, row - m_fromTop);
    } catch (const DbError&) {
        // The file is gone; the grid stays where it is.
    }
}

void TDBGIDReposition::SetAllSortButton()
{
    m_grid.setSortButtons(true);
}

} // namespace melovane
