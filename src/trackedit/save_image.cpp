#include "trackedit/save_image.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "playlists/track_step.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

void SaveImage(ListHistory& history,
               Database& database,
               const QString& fid,
               const QString& image,
               const QString& former)
{
    QString sharing = u"select FID from db_all where image="_s + sql::text(former + u".jpg"_s);
    if (!former.isEmpty()) {
        // The name stands with or without its extension, by the program that wrote it.
        sharing += u" or image="_s + sql::text(former);
    }
    const std::vector<ColumnValue> values{{u"Image"_s, image}};
    TrackStep step(history, database, ListAction::Cover);
    step.write(fid, values, TagOrder::Enter);
    const auto others = database.OpenRecordset(sharing);
    for (; !others->Eof(); others->MoveNext()) {
        const QString other = others->value(u"FID").toText();
        if (other != fid) {
            step.write(other, values, TagOrder::None);
        }
    }
    step.commit();
}

} // namespace melovane
