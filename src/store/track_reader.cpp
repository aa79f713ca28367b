#include "store/track_reader.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "store/track_fields.h"

#include <variant>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

template <typename... Cases> struct Overloaded : Cases...
{
    using Cases::operator()...;
};

template <typename... Cases> Overloaded(Cases...) -> Overloaded<Cases...>;

void put(const Value& value,
         const TrackMember& member,
         const MixDefaults& defaults,
         MlvAllData& data)
{
    std::visit(Overloaded{
                   [](std::monostate) {},
                   [&](QString MlvAllData::*text) { data.*text = value.toText(); },
                   [&](int MlvAllData::*number) {
                       data.*number =
                           number == &MlvAllData::MixTime
                               ? mixTimeOrDefault(value.toLong(), defaults.DefaultMixTime)
                               : value.toLong();
                   },
                   [&](MLVMixStyle MlvAllData::*style) {
                       data.*style =
                           mixStyleOrDefault(value.toText(), style == &MlvAllData::MixIn
                                                                 ? defaults.DefaultMixStyleIN
                                                                 : defaults.DefaultMixStyleOUT);
                   },
                   [&](MlvEQStyle MlvAllData::*style) {
                       data.*style = eqStyleOrDefault(value.toText(), defaults.DefaultEQ);
                   },
               },
               member);
}

} // namespace

void readAllData(const Recordset& row, const MixDefaults& defaults, MlvAllData& data)
{
    for (const TrackField field : recordFields()) {
        put(row.value(columnOf(field)), rowOf(field).member, defaults, data);
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
