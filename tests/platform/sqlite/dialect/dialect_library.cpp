#include "platform/sqlite/dialect/dialect_library.h"

#include "platform/db/db_error.h"
#include "platform/sqlite/functions/functions.h"

#include <sqlite3.h>

#include <stdexcept>

namespace melovane::sqlite {

using namespace Qt::Literals::StringLiterals;

FieldDef textField(const QString& name, int size)
{
    FieldDef def;
    def.Name = name;
    def.Size = size;
    return def;
}

FieldDef field(const QString& name, FieldType type)
{
    FieldDef def;
    def.Name = name;
    def.Type = type;
    return def;
}

FieldDef autoNumber(const QString& name)
{
    FieldDef def = field(name, FieldType::Long);
    def.Attributes = kFieldAutoNumber;
    return def;
}

namespace {

QString columnSql(const FieldDef& def)
{
    const QString name = u'"' + def.Name + u'"';
    if ((def.Attributes & kFieldAutoNumber) != 0) {
        return name + u" INTEGER PRIMARY KEY AUTOINCREMENT"_s;
    }
    switch (def.Type) {
    case FieldType::Text:
    case FieldType::Memo:
        return name + u" TEXT COLLATE MLV"_s;
    case FieldType::Boolean:
    case FieldType::Long:
        return name + u" INTEGER"_s;
    case FieldType::Double:
    case FieldType::Date:
        return name + u" REAL"_s;
    }
    return name;
}

constexpr auto kVplAll =
    " SELECT 1 AS Nr, PL_ALL.Aktion, PL_ALL.FrameStop, PL_ALL.FrameStart, PL_ALL.FrameStart AS "
    "Start, PL_ALL.FrameStop AS Stop, PL_ALL.FID, PL_ALL.PLID, PL_ALL.PNID, PL_ALL.EQ, "
    "PL_ALL.MixOut, PL_ALL.MixIn, PL_ALL.Pitch, PL_ALL.Volume, PL_ALL.SID, db_all.Interpret, "
    "db_all.DTimeMsec, db_all.Titel, db_all.DEL FROM PL_ALL INNER JOIN db_all ON PL_ALL.FID = "
    "db_all.FID ORDER BY PL_ALL.SID"_L1;

constexpr auto* kRows = R"(
insert into db_all ("FID", "Titel", "Interpret", "Album", "Genre", "Note", "BPM", "Path", "DLen",
    "DTimeMsec", "DTSImport", "DEL", "Play", "PlayCountDay", "Gain") values
 ('AAAAAAAAAAA1', 'Blue', 'Ärzte', 'Erstes', 'Rock', '5', '98', 'C:\Musik\', 1000, 261224, 45000,
  0, 45456.25, null, 1.5),
 ('AAAAAAAAAAA2', 'blues', 'Abba', 'Erstes', 'Pop', '4', '130', 'C:\Musik\Neu\', 2000, 52245,
  45000.5, 0, null, 2, 2.5),
 ('AAAAAAAAAAA3', 'Émile', 'zebra', 'Zweites', 'rock', '', null, 'D:\', 3000, 26122, 45001, -1,
  null, null, null),
 ('AAAAAAAAAAA4', '4 Ecken', '', null, null, null, '', 'D:\', 4000, 0, null, 2, null, null, -0.5);
insert into pl_all (PLID, PNID, SID, FID, Aktion, FrameStart, FrameStop, Pitch, Volume, MixIn,
    MixOut, EQ) values
 (1, 5, 20, 'AAAAAAAAAAA1', 0, 10, 100, 1, 90, 'in1', 'out1', null),
 (2, 5, 10, 'AAAAAAAAAAA2', 3, 20, 200, 2, 80, null, 'out2', 'q'),
 (3, 6, 10, 'AAAAAAAAAAA3', 0, 30, 300, 3, 70, 'in3', null, null),
 (4, 6, 20, 'GONE', 0, 40, 400, 4, 60, null, null, null);
insert into pl_name (NID, GRID, Name, SID, anzahl, Activ, IsPlay, UpdateTime) values
 (5, 1, 'Party', 1, 2, -1, 0, 45000), (6, 1, 'Abend', 2, 2, 0, -1, null),
 (7, -1, 'Jingles', 1, 0, -1, 0, null);
insert into pl_group (GRID, Name, SID, Activ) values (1, 'Gruppe', 1, -1), (2, 'Leer', 2, 0);
insert into config (Lang, Name, Value, Beschreibung) values
 (49, 'Genre', '1', 'Rock'), (-1, 'Genre', 'User', 'Pop');
)";

} // namespace

DialectLibrary::DialectLibrary()
{
    sqlite3_open(":memory:", &m_connection);
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    registerFunctions(m_connection, [] { return QDateTime(QDate(2024, 6, 15), QTime(12, 30)); });
    addTable(u"db_all"_s,
             {textField(u"FID"_s, 12), textField(u"Titel"_s), textField(u"Interpret"_s),
              textField(u"Album"_s), textField(u"Genre"_s, 50), textField(u"Note"_s, 1),
              textField(u"BPM"_s, 10), textField(u"Path"_s), field(u"DLen"_s, FieldType::Long),
              field(u"DTimeMsec"_s, FieldType::Long), field(u"DTSImport"_s, FieldType::Date),
              field(u"DEL"_s, FieldType::Long), field(u"Play"_s, FieldType::Date),
              field(u"PlayCountDay"_s, FieldType::Long), field(u"Gain"_s, FieldType::Double)});
    addTable(u"PL_ALL"_s,
             {autoNumber(u"PLID"_s), field(u"PNID"_s, FieldType::Long),
              field(u"SID"_s, FieldType::Long), textField(u"FID"_s, 12),
              field(u"Aktion"_s, FieldType::Long), field(u"FrameStart"_s, FieldType::Long),
              field(u"FrameStop"_s, FieldType::Long), field(u"Pitch"_s, FieldType::Long),
              field(u"Volume"_s, FieldType::Long), textField(u"MixIn"_s), textField(u"MixOut"_s),
              textField(u"EQ"_s)});
    addTable(u"pl_name"_s,
             {autoNumber(u"NID"_s), field(u"GRID"_s, FieldType::Long), textField(u"Name"_s),
              field(u"SID"_s, FieldType::Long), field(u"anzahl"_s, FieldType::Long),
              field(u"Activ"_s, FieldType::Boolean), field(u"IsPlay"_s, FieldType::Boolean),
              field(u"UpdateTime"_s, FieldType::Date)});
    addTable(u"pl_group"_s,
             {autoNumber(u"GRID"_s), textField(u"Name"_s), field(u"SID"_s, FieldType::Long),
              field(u"Activ"_s, FieldType::Boolean)});
    addTable(u"config"_s, {field(u"Lang"_s, FieldType::Long), textField(u"Name"_s),
                           textField(u"Value"_s), textField(u"Beschreibung"_s)});
    addTable(u"todo"_s, {field(u"ID"_s, FieldType::Long), textField(u"FID"_s, 12)});
    addTable(u"tree_genre"_s,
             {autoNumber(u"id"_s), textField(u"Name"_s), field(u"anzahl"_s, FieldType::Long),
              textField(u"imgkey"_s), field(u"favorit"_s, FieldType::Boolean),
              field(u"tstamp"_s, FieldType::Date)});
    static_cast<void>(raw(QString::fromUtf8(kRows)));
    addQuery(u"VPL_ALL"_s, kVplAll);
}

DialectLibrary::~DialectLibrary()
{
    sqlite3_close(m_connection);
}

void DialectLibrary::addTable(const QString& name, std::vector<FieldDef> fields)
{
    QStringList columns;
    bool hasKey = false;
    for (const FieldDef& def : fields) {
        columns.append(columnSql(def));
        hasKey = hasKey || (def.Attributes & kFieldAutoNumber) != 0;
    }
    if (!hasKey) {
        columns.append(u"mlv_id INTEGER PRIMARY KEY"_s);
    }
    static_cast<void>(raw(u"create table \"%1\" (%2)"_s.arg(name, columns.join(u", "))));
    Source source;
    source.name = name;
    source.schema = u"main"_s;
    source.table = name;
    source.fields = std::move(fields);
    m_sources[name.toLower()] = source;
}

void DialectLibrary::addQuery(const QString& name, const QString& sql)
{
    Source source;
    source.kind = Source::Kind::Query;
    source.name = name;
    source.sql = sql;
    m_sources[name.toLower()] = source;
}

std::optional<Source> DialectLibrary::find(const QString& name) const
{
    const auto found = m_sources.find(name.toLower());
    return found == m_sources.end() ? std::nullopt : std::optional(found->second);
}

QString DialectLibrary::rowsOf(sqlite3_stmt* statement)
{
    QStringList rows;
    int code = 0;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
        QStringList cells;
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            const auto* text = sqlite3_column_text(statement, i);
            cells.append(text == nullptr ? u"-"_s
                                         : QString::fromUtf8(reinterpret_cast<const char*>(text),
                                                             sqlite3_column_bytes(statement, i)));
        }
        rows.append(cells.join(u'|'));
    }
    if (code != SQLITE_DONE) {
        throw std::runtime_error(sqlite3_errmsg(m_connection));
    }
    return rows.join(u'\n');
}

QString DialectLibrary::raw(const QString& sql, const QStringList& parameters)
{
    QString rows;
    const QByteArray bytes = sql.toUtf8();
    const char* rest = bytes.constData();
    while (*rest != '\0') {
        sqlite3_stmt* statement = nullptr;
        const int code = sqlite3_prepare_v2(m_connection, rest, -1, &statement, &rest);
        if (code != SQLITE_OK) {
            throw std::runtime_error(std::string(sqlite3_errmsg(m_connection)) + " in " +
                                     bytes.toStdString());
        }
        if (statement == nullptr) {
            break;
        }
        for (int i = 0; i < parameters.size(); ++i) {
            const QByteArray value = parameters[i].toUtf8();
            sqlite3_bind_text(statement, i + 1, value.constData(), int(value.size()),
                              SQLITE_TRANSIENT);
        }
        try {
            rows = rowsOf(statement);
        } catch (...) {
            sqlite3_finalize(statement);
            throw;
        }
        sqlite3_finalize(statement);
    }
    return rows;
}

bool DialectLibrary::prepares(const QString& sql)
{
    sqlite3_stmt* statement = nullptr;
    const QByteArray bytes = sql.toUtf8();
    const int code = sqlite3_prepare_v2(m_connection, bytes.constData(), -1, &statement, nullptr);
    m_message = QString::fromUtf8(sqlite3_errmsg(m_connection));
    sqlite3_finalize(statement);
    return code == SQLITE_OK;
}

QString DialectLibrary::run(const QString& statement)
{
    return raw(translate(statement, *this).sql);
}

QString DialectLibrary::run(const QString& statement, const QStringList& parameters)
{
    return raw(translate(statement, *this, true).sql, parameters);
}

QString DialectLibrary::runByKeys(const Translation& translation, const QStringList& parameters)
{
    QStringList rows;
    const QString keys = raw(translation.keySql, parameters);
    for (const QString& key : keys.split(u'\n', Qt::SkipEmptyParts)) {
        QString row = raw(translation.rowSql, key.split(u'|'));
        for (size_t i = 0; i < translation.tables.size(); ++i) {
            row = row.mid(row.indexOf(u'|') + 1);
        }
        rows.append(row);
    }
    return rows.join(u'\n');
}

} // namespace melovane::sqlite
