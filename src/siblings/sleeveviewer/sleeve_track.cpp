#include "siblings/sleeveviewer/sleeve_track.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "platform/system/path_text.h"
#include "siblings/sleeveviewer/sleeve_pictures.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString titleOf(const Recordset& row)
{
    const QString artist = row.value(u"Interpret").toText();
    const QString title = row.value(u"Titel").toText();
    return artist.isEmpty() || title.isEmpty() ? artist + title : artist + u" - "_s + title;
}

} // namespace

SleeveTracks::SleeveTracks(DBEngine& engine, const Files& files, QString dataFolder)
    : m_engine(engine)
    , m_files(files)
    , m_dataFolder(std::move(dataFolder))
{}

SleeveTrack SleeveTracks::byFid(const QString& library, const QString& fid) const
{
    return fid.isEmpty() ? SleeveTrack() : find(library, u"FID="_s + sql::text(fid));
}

SleeveTrack SleeveTracks::byImage(const QString& library, const QString& image) const
{
    if (image.isEmpty()) {
        return {};
    }
    const QString name = withoutJpg(image);
    return find(library,
                u"Image="_s + sql::text(name) + u" or Image="_s + sql::text(name + u".jpg"_s));
}

SleeveTrack SleeveTracks::find(const QString& library, const QString& condition) const
{
    SleeveTrack track;
    try {
        const auto database = m_engine.OpenDatabase(library);
        const auto rows = database->OpenRecordset(
            u"select FID, Interpret, Titel, Image, Path, DName from db_all where "_s + condition);
        if (!rows->Eof()) {
            track.FID = rows->value(u"FID").toText();
            track.title = titleOf(*rows);
            track.image = rows->value(u"Image").toText();
            track.audioFile =
                path::join(rows->value(u"Path").toText(), rows->value(u"DName").toText());
        }
        database->Close();
        m_engine.Release(library);
    } catch (const DbError&) {
        return {};
    }
    return track;
}

} // namespace melovane
