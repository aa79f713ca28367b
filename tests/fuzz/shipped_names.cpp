#include "fuzz/shipped_names.h"

#include "platform/sqlite/functions/functions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <sqlite3.h>

#include <stdexcept>

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

QString textOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    return QString::fromUtf8(file.readAll());
}

FieldDef fieldOf(const QStringList& words)
{
    FieldDef field;
    field.Name = words[0];
    const QString& type = words[1];
    field.Size = type == u"text" ? words.value(2).toInt() : 0;
    field.Type = type == u"long"     ? FieldType::Long
                 : type == u"yesno"  ? FieldType::Boolean
                 : type == u"date"   ? FieldType::Date
                 : type == u"double" ? FieldType::Double
                 : type == u"memo"   ? FieldType::Memo
                                     : FieldType::Text;
    field.Attributes = words.contains(u"auto") ? kFieldAutoNumber : 0;
    return field;
}

QString columnSql(const FieldDef& field)
{
    const QString name = u"\"%1\" "_s.arg(field.Name);
    if (field.Attributes == kFieldAutoNumber) {
        return name + u"INTEGER PRIMARY KEY AUTOINCREMENT"_s;
    }
    switch (field.Type) {
    case FieldType::Text:
    case FieldType::Memo:
        return name + u"TEXT COLLATE MLV"_s;
    case FieldType::Long:
    case FieldType::Boolean:
        return name + u"INTEGER"_s;
    case FieldType::Double:
    case FieldType::Date:
        return name + u"REAL"_s;
    }
    return name;
}

} // namespace

ShippedNames::ShippedNames()
{
    sqlite3_open(":memory:", &m_connection);
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite::registerFunctions(m_connection,
                              [] { return QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26)); });
    run(u"ATTACH ':memory:' AS side"_s);
    // Nothing names these two; whatever touches them has broken out.
    run(u"CREATE TABLE mlv_hidden (secret TEXT)"_s);
    run(u"CREATE TABLE side.mlv_hidden_too (secret TEXT)"_s);
    const QString folder = QString::fromUtf8(MLV_SCHEMA_FOLDER);
    readTables(folder + u"/tables.txt"_s);
    readQueries(folder + u"/queries"_s);
    addRows();
}

ShippedNames::~ShippedNames()
{
    sqlite3_close(m_connection);
}

std::optional<sqlite::Source> ShippedNames::find(const QString& name) const
{
    const auto found = m_sources.find(name.toLower());
    return found == m_sources.end() ? std::nullopt : std::optional(found->second);
}

bool ShippedNames::run(const QString& sql)
{
    return sqlite3_exec(m_connection, sql.toUtf8().constData(), nullptr, nullptr, nullptr) ==
           SQLITE_OK;
}

void ShippedNames::readTables(const QString& path)
{
    static const QRegularExpression blanks(u"\\s+"_s);
    std::map<QString, std::vector<FieldDef>> tables;
    std::vector<FieldDef>* table = nullptr;
    for (const QString& line : textOf(path).split(u'\n')) {
        const QStringList words = line.left(line.indexOf(u'#')).split(blanks, Qt::SkipEmptyParts);
        if (words.isEmpty() || words[0] == u"index" || words[0] == u"unique") {
            continue;
        }
        if (words[0] == u"table") {
            table = &tables[words[1]];
            if (words.value(2) == u"like") {
                *table = tables[words[3]];
            }
        } else {
            table->push_back(fieldOf(words));
        }
    }
    for (const auto& [name, fields] : tables) {
        addTable(name, fields);
        const bool isTemplate = name.startsWith(u"x_", Qt::CaseInsensitive);
        if (isTemplate && !name.contains(u"default"_s)) {
            addTable(name.mid(2), fields);
        }
    }
    for (const QString& name : {u"tree_kategorie"_s, u"tree_tempo"_s, u"tree_user1"_s}) {
        addTable(name, tables[u"x_TREE_default"_s]);
    }
}

void ShippedNames::addTable(const QString& name, const std::vector<FieldDef>& fields)
{
    sqlite::Source source;
    source.name = name;
    const bool inSideFile = name.startsWith(u"tree_", Qt::CaseInsensitive) ||
                            name.startsWith(u"temp_", Qt::CaseInsensitive);
    source.schema = inSideFile ? u"side"_s : u"main"_s;
    source.table = name;
    source.fields = fields;
    QStringList columns;
    for (const FieldDef& field : fields) {
        columns.append(columnSql(field));
    }
    run(u"CREATE TABLE %1.\"%2\" (%3)"_s.arg(source.schema, name, columns.join(u", ")));
    m_sources[name.toLower()] = source;
}

void ShippedNames::readQueries(const QString& folder)
{
    const QDir queries(folder);
    for (const QString& file : queries.entryList({u"*.sql"_s}, QDir::Files)) {
        QStringList lines = textOf(queries.filePath(file)).split(u'\n');
        lines.removeIf([](const QString& line) { return line.startsWith(u"--"); });
        sqlite::Source source;
        source.kind = sqlite::Source::Kind::Query;
        source.name = QFileInfo(file).baseName();
        source.sql = lines.join(u'\n');
        m_sources[source.name.toLower()] = source;
    }
}

/// A few rows each, with nulls and with texts that differ in case alone.
void ShippedNames::addRows()
{
    run(u"INSERT INTO db_all (FID, Titel, Interpret, Genre, Note, BPM, Path, DLen, DTimeMsec, DEL, "
        "DTSImport, Play) VALUES ('1', 'Blue', 'Ärzte', 'Rock', '5', '98', 'C:\\', 1000, 261224, 0, "
        "46000.5, NULL), ('2', 'blues', 'ÄRZTE', 'rock', '', NULL, 'D:\\', 2000, NULL, -1, NULL, "
        "46000), ('3', 'it''s [x]', NULL, NULL, NULL, '130', NULL, NULL, 0, 2, 45000, 45000)"_s);
    run(u"INSERT INTO pl_all (PNID, SID, FID, Aktion, MixIn) VALUES (1, 2, '1', 0, 'in'), "
        "(1, 1, '2', 3, NULL), (2, 1, '9', 0, '')"_s);
    run(u"INSERT INTO pl_name (GRID, Name, SID, anzahl, Activ) VALUES (1, 'Abend', 1, 2, -1), "
        "(-1, 'Jingle', 1, 0, 0)"_s);
    run(u"INSERT INTO pl_group (Name, SID) VALUES ('Party', 1)"_s);
    run(u"INSERT INTO pl_stat (FID, tstamp, tyear) VALUES ('1', 46000, 2025)"_s);
    run(u"INSERT INTO genre (Genre_ID, Name) VALUES (17, 'Rock'), (255, '')"_s);
    run(u"INSERT INTO side.tree_genre (Name, anzahl, favorit) VALUES ('ROCK', 2, -1)"_s);
    run(u"INSERT INTO todo (ID, FID) VALUES (1, '2')"_s);
}

QStringList ShippedNames::reached(const QString& text) const
{
    static const QRegularExpression between(u"[^a-z0-9_]+"_s);
    QStringList tables;
    QStringList waiting = text.toLower().split(between, Qt::SkipEmptyParts);
    QStringList seen;
    while (!waiting.isEmpty()) {
        const QString word = waiting.takeLast();
        const auto source = m_sources.find(word);
        if (source == m_sources.end() || seen.contains(word)) {
            continue;
        }
        seen.append(word);
        if (source->second.kind == sqlite::Source::Kind::Table) {
            tables.append(word);
        } else {
            waiting += source->second.sql.toLower().split(between, Qt::SkipEmptyParts);
        }
    }
    return tables;
}

} // namespace melovane::fuzz
