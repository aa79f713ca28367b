#include "store/track_writing.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/trim_blanks.h"
#include "store/pending_jobs.h"
#include "store/track_fields.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

QStringList TrackChange::trees() const
{
    QStringList result;
    for (const ColumnChange& change : columns) {
        const TrackFieldRow* const field = findTrackField(change.column);
        if (field && !field->tree.isEmpty()) {
            result.append(field->tree.toString());
        }
    }
    return result;
}

bool TrackChange::isInFile() const
{
    return std::any_of(columns.begin(), columns.end(), [](const ColumnChange& change) {
        const TrackFieldRow* const field = findTrackField(change.column);
        return field && !field->frame.id.isEmpty();
    });
}

TrackChange writeTrack(Database& database,
                       const QString& fid,
                       std::span<const ColumnValue> values,
                       TagOrder order)
{
    TrackChange change{trimBlanks(fid), {}};
    Transaction writing(database);
    const auto row =
        database.OpenRecordset(u"select * from db_all where FID="_s + sql::text(change.fid));
    row->Edit();
    for (const ColumnValue& value : values) {
        const Value before = row->value(value.column);
        row->setValue(value.column, value.value);
        const Value after = row->value(value.column);
        if (before != after) {
            change.columns.push_back({value.column, before, after});
        }
    }
    row->Update();
    if (order == TagOrder::Enter) {
        PendingJobs::SaveEditFID(database, change.fid);
    }
    writing.commit();
    return change;
}

} // namespace melovane
