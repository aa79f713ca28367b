#include "store/track_reader.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"

#include <variant>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A plain column of the record. The styles and the mix time have rules of their own.
struct PlainColumn
{
    QStringView name;
    std::variant<QString MlvAllData::*, int MlvAllData::*> field;
};

constexpr PlainColumn kColumnsBeforeStyles[] = {
    {u"FID", &MlvAllData::FID},
    {u"Titel", &MlvAllData::Titel},
    {u"Pitch", &MlvAllData::Pitch},
    {u"Volume", &MlvAllData::Volume},
    {u"Track", &MlvAllData::Track},
    {u"Note", &MlvAllData::Note},
    {u"Interpret", &MlvAllData::Interpret},
    {u"Kommentar", &MlvAllData::Kommentar},
    {u"Album", &MlvAllData::Album},
    {u"Jahr", &MlvAllData::Jahr},
    {u"Genre", &MlvAllData::Genre},
    {u"DName", &MlvAllData::DName},
    {u"DTimeMsec", &MlvAllData::DTimeMsec},
    {u"DLen", &MlvAllData::DLen},
    {u"DTime", &MlvAllData::DTime},
    {u"DTSDatei", &MlvAllData::DTSDatei},
    {u"DTSImport", &MlvAllData::DTSImport},
    {u"DKhz", &MlvAllData::DKhz},
    {u"DBit", &MlvAllData::DBit},
    {u"BPM", &MlvAllData::BPM},
    {u"DEL", &MlvAllData::DEL},
    {u"FrameStart", &MlvAllData::FrameStart},
    {u"FrameStop", &MlvAllData::FrameStop},
    {u"Normalize", &MlvAllData::Normalize},
    {u"Play", &MlvAllData::Play},
    {u"PlayCountDay", &MlvAllData::PlayCountDay},
    {u"PlayCountAll", &MlvAllData::PlayCountAll},
    {u"Path", &MlvAllData::Path},
    {u"DriveTyp", &MlvAllData::DriveTyp},
    {u"DriveName", &MlvAllData::DriveName},
};

constexpr PlainColumn kColumnsBehindStyles[] = {
    {u"Image", &MlvAllData::Image},         {u"Kategorie", &MlvAllData::Kategorie},
    {u"Situation", &MlvAllData::Situation}, {u"Stimmung", &MlvAllData::Stimmung},
    {u"Tempo", &MlvAllData::Tempo},         {u"User1", &MlvAllData::User1},
    {u"User2", &MlvAllData::User2},         {u"User3", &MlvAllData::User3},
    {u"User4", &MlvAllData::User4},         {u"User5", &MlvAllData::User5},
};

void readColumn(const Recordset& row, const PlainColumn& column, MlvAllData& data)
{
    const Value value = row.value(column.name);
    if (const auto* text = std::get_if<QString MlvAllData::*>(&column.field)) {
        data.*(*text) = value.toText();
    } else {
        data.*(std::get<int MlvAllData::*>(column.field)) = value.toLong();
    }
}

} // namespace

void readAllData(const Recordset& row, const MixDefaults& defaults, MlvAllData& data)
{
    for (const PlainColumn& column : kColumnsBeforeStyles) {
        readColumn(row, column, data);
    }
    data.MixIn = mixStyleOrDefault(row.value(u"MixIn").toText(), defaults.DefaultMixStyleIN);
    data.MixOut = mixStyleOrDefault(row.value(u"MixOut").toText(), defaults.DefaultMixStyleOUT);
    data.EQ = eqStyleOrDefault(row.value(u"eq").toText(), defaults.DefaultEQ);
    data.MixTime = mixTimeOrDefault(row.value(u"MixTime").toLong(), defaults.DefaultMixTime);
    for (const PlainColumn& column : kColumnsBehindStyles) {
        readColumn(row, column, data);
    }
}

TrackReader::TrackReader(DBEngine& engine, ErrorSink sink)
    : m_engine(engine)
    , m_sink(std::move(sink))
{}

MlvAllData TrackReader::GetAllDataByFid(const QString& dbName,
                                        const QString& fid,
                                        const MixDefaults& defaults) const
{
    MlvAllData data;
    quietly(m_sink, u"GetAllDataByFid"_s, [&] {
        const auto database = m_engine.OpenDatabase(dbName);
        const auto row =
            database->OpenRecordset(u"select * from db_all where fid="_s + sql::text(fid));
        readAllData(*row, defaults, data);
    });
    return data;
}

} // namespace melovane
