#include "playlists/track_step.h"

#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

TrackStep::TrackStep(ListHistory& history, Database& database, ListAction action)
    : m_database(database)
    , m_reach(trackReach(action))
    , m_edit(history, database, action, Pnid{})
{}

void TrackStep::write(const QString& fid, std::span<const ColumnValue> values, TagOrder order)
{
    wrote(writeTrack(m_database, fid, values, order));
}

void TrackStep::wrote(const TrackChange& change)
{
    TrackChange kept = change;
    std::erase_if(kept.columns, [this](const ColumnChange& column) {
        return !isTakenBack(column.column, m_reach);
    });
    m_edit.changes(kept);
    m_trees.append(change.trees());
    m_only = m_tracks++ == 0 || m_only == change.fid ? change.fid : QString();
}

void TrackStep::commit()
{
    if (!m_only.isEmpty()) {
        const auto row =
            m_database.OpenRecordset(u"select Titel from db_all where FID="_s + sql::text(m_only));
        m_edit.setName(row->Eof() ? m_only : row->value(0).toText());
    }
    m_trees.removeDuplicates();
    m_edit.commit();
}

} // namespace melovane
