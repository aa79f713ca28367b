#include "platform/sqlite/engine/engine_fixture.h"

#include "platform/db/sql_text.h"
#include "platform/db/text_compare.h"

#include <QFile>

#include <sqlite3.h>

namespace melovane::test {

namespace {

QString check(sqlite3* connection)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(connection, "PRAGMA integrity_check", -1, &statement, nullptr) !=
        SQLITE_OK) {
        return QString::fromUtf8(sqlite3_errmsg(connection));
    }
    QStringList lines;
    int code = SQLITE_OK;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
        lines.append(
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0))));
    }
    if (code != SQLITE_DONE) {
        lines.append(QString::fromUtf8(sqlite3_errmsg(connection)));
    }
    sqlite3_finalize(statement);
    return lines.join(u'\n');
}

} // namespace

FieldDef textField(const QString& name, int size)
{
    FieldDef result;
    result.Name = name;
    result.Size = size;
    return result;
}

FieldDef field(const QString& name, FieldType type)
{
    FieldDef result;
    result.Name = name;
    result.Type = type;
    return result;
}

FieldDef autoNumber(const QString& name)
{
    FieldDef result = field(name, FieldType::Long);
    result.Attributes = kFieldAutoNumber;
    return result;
}

TableDef table(const QString& name, std::vector<FieldDef> fields)
{
    TableDef result;
    result.Name = name;
    result.Fields = std::move(fields);
    return result;
}

TableDef keyedTable(const QString& name, std::vector<FieldDef> fields)
{
    TableDef result = table(name, std::move(fields));
    result.Indexes.push_back({u"PrimaryKey"_s, {result.Fields.front().Name}, true, true});
    return result;
}

TableDef link(const QString& name, const QString& file)
{
    TableDef result;
    result.Name = name;
    result.Connect = u";Database="_s + file;
    result.SourceTableName = name;
    return result;
}

void makeSuiteTables(Database& database)
{
    constexpr auto kLong = FieldType::Long;
    constexpr auto kDate = FieldType::Date;
    constexpr auto kYesNo = FieldType::Boolean;
    std::vector<FieldDef> track{textField(u"FID"_s, 12)};
    for (const auto& name :
         {u"Titel"_s, u"Interpret"_s, u"Album"_s,     u"Genre"_s,    u"Jahr"_s,
          u"Track"_s, u"Note"_s,      u"BPM"_s,       u"Path"_s,     u"DName"_s,
          u"DTime"_s, u"DriveName"_s, u"MixIn"_s,     u"MixOut"_s,   u"eq"_s,
          u"Image"_s, u"Kategorie"_s, u"Situation"_s, u"Stimmung"_s, u"Tempo"_s,
          u"User1"_s, u"User2"_s,     u"User3"_s,     u"User4"_s,    u"User5"_s}) {
        track.push_back(textField(name, 255));
    }
    track.push_back(field(u"Kommentar"_s, FieldType::Memo));
    for (const auto& name : {u"DLen"_s, u"DTimeMsec"_s, u"DKhz"_s, u"DBit"_s, u"DriveTyp"_s,
                             u"DEL"_s, u"FrameStart"_s, u"FrameStop"_s, u"Normalize"_s, u"Pitch"_s,
                             u"Volume"_s, u"MixTime"_s, u"PlayCountDay"_s, u"PlayCountAll"_s}) {
        track.push_back(field(name, kLong));
    }
    for (const auto& name : {u"DTSDatei"_s, u"DTSImport"_s, u"Play"_s, u"favorit"_s}) {
        track.push_back(field(name, kDate));
    }
    TableDefs& tables = database.tableDefs();
    tables.Append(keyedTable(u"db_all"_s, track));
    tables.Append(keyedTable(
        u"pl_all"_s,
        {autoNumber(u"PLID"_s), field(u"PNID"_s, kLong), field(u"SID"_s, kLong),
         textField(u"FID"_s, 12), field(u"Aktion"_s, kLong), textField(u"Command"_s, 255),
         field(u"FrameStart"_s, kLong), field(u"FrameStop"_s, kLong), field(u"Pitch"_s, kLong),
         field(u"Volume"_s, kLong), textField(u"MixIn"_s, 255), textField(u"MixOut"_s, 255),
         textField(u"EQ"_s, 255), field(u"MixTime"_s, kLong)}));
    tables.Append(keyedTable(
        u"pl_name"_s, {autoNumber(u"NID"_s), field(u"GRID"_s, kLong), textField(u"Name"_s, 255),
                       field(u"SID"_s, kLong), field(u"anzahl"_s, kLong), field(u"Activ"_s, kYesNo),
                       field(u"IsPlay"_s, kYesNo), field(u"Lock"_s, kYesNo),
                       field(u"Sicherung"_s, kYesNo), field(u"Info"_s, FieldType::Memo),
                       field(u"CreateTime"_s, kDate), field(u"UpdateTime"_s, kDate)}));
    tables.Append(table(u"genre"_s, {field(u"Genre_ID"_s, kLong), textField(u"Name"_s, 50)}));
    tables.Append(
        table(u"config"_s, {field(u"Lang"_s, kLong), textField(u"Name"_s, 50),
                            textField(u"Value"_s, 50), textField(u"Beschreibung"_s, 255)}));
    tables.Append(table(u"todo"_s, {field(u"ID"_s, kLong), textField(u"FID"_s, 255)}));
    tables.Append(table(u"db_edit"_s, {textField(u"FID"_s, 12)}));
    tables.Append(
        keyedTable(u"db_version"_s, {textField(u"id"_s, 10), textField(u"Version"_s, 50)}));
    tables.Append(table(u"ChangeTree"_s, {textField(u"TreeName"_s, 50)}));
}

QString vplAllText()
{
    return u" SELECT 1 AS Nr, PL_ALL.Aktion, PL_ALL.FrameStop, PL_ALL.FrameStart, PL_ALL.FrameStart AS Start, PL_ALL.FrameStop AS Stop, "
           " PL_ALL.FID, PL_ALL.PLID, PL_ALL.PNID, PL_ALL.EQ, PL_ALL.MixOut, PL_ALL.MixIn, PL_ALL.Pitch, PL_ALL.Volume, PL_ALL.MixTime, "
           " PL_ALL.SID, db_all.Interpret, db_all.Kommentar, db_all.DTimeMsec, db_all.DTime, db_all.Album, db_all.Titel, db_all.Jahr, "
           " db_all.BPM, db_all.Situation, db_all.Tempo, db_all.Stimmung, db_all.Kategorie, db_all.User1, db_all.User2, db_all.User3, "
           " db_all.User4, db_all.User5, db_all.Play, db_all.PlayCountDay, db_all.PlayCountAll, db_all.Note, db_all.DEL, db_all.Genre, "
           " db_all.DKhz, db_all.DBit, db_all.Path, db_all.DName, db_all.Track, db_all.Normalize, db_all.DriveTyp, db_all.DriveName, "
           " PL_ALL.Command FROM PL_ALL INNER JOIN db_all ON PL_ALL.FID = db_all.FID ORDER BY PL_ALL.SID"_s;
}

void makeSuiteQueries(Database& database)
{
    database.CreateQueryDef(u"VPL_ALL"_s, vplAllText());
    database.CreateQueryDef(u"VDB_ALL"_s, u"SELECT * FROM db_all"_s);
    database.CreateQueryDef(
        u"QU_FindFile"_s,
        u"PARAMETERS sPath Text, sDName Text; SELECT FID, MixIn, Titel FROM db_all WHERE Path=sPath AND DName=sDName"_s);
}

QStringList rowsOf(Recordset& set)
{
    QStringList rows;
    for (set.MoveFirst(); !set.Eof(); set.MoveNext()) {
        QStringList cells;
        for (int i = 0; i < set.fieldCount(); ++i) {
            const Value value = set.value(i);
            cells.append(value.isNull() ? u"null"_s : value.toText());
        }
        rows.append(cells.join(u'|'));
    }
    return rows;
}

QStringList rowsOf(Database& database, const QString& statement)
{
    return rowsOf(*database.OpenRecordset(statement));
}

Value cellOf(Database& database, const QString& statement)
{
    const auto set = database.OpenRecordset(statement);
    return set->value(0);
}

QString integrityOf(const QString& path)
{
    sqlite3* raw = nullptr;
    const auto compare = [](void*, int leftSize, const void* left, int rightSize,
                            const void* right) {
        return textcompare::compareUtf8(static_cast<const char*>(left), leftSize,
                                        static_cast<const char*>(right), rightSize);
    };
    const int code =
        sqlite3_open_v2(QFile::encodeName(path).constData(), &raw, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_create_collation(raw, "MLV", SQLITE_UTF8, nullptr, compare);
    const QString result = code == SQLITE_OK ? check(raw) : QString::fromUtf8(sqlite3_errmsg(raw));
    sqlite3_close(raw);
    return result;
}

EngineTest::EngineTest()
    : m_engine(sqlite::makeEngine(m_clock))
    , m_siblingEngine(sqlite::makeEngine(m_clock))
    , m_database(
          m_engine->Workspaces(0).CreateDatabase(path(), QString::fromUtf16(kDatabaseLocale)))
{}

void EngineTest::makeSuite()
{
    Transaction transaction(db());
    makeSuiteTables(db());
    makeSuiteQueries(db());
    transaction.commit();
}

std::unique_ptr<Database> EngineTest::sibling(const QString& name)
{
    return m_siblingEngine->OpenDatabase(path(name));
}

void EngineTest::addTrack(const QString& fid, const QString& titel, const QString& interpret)
{
    db().Execute(u"insert into db_all (FID, Titel, Interpret, DEL) values (%1, %2, %3, 0)"_s.arg(
        sql::text(fid), sql::text(titel), sql::text(interpret)));
}

} // namespace melovane::test
