#include "store/shipped_database.h"

#include "config/paths.h"
#include "platform/db/database.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "platform/system/text_file.h"
#include "store/create_db.h"
#include "store/schema_source.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Stands in the rows of db_version for the level of this release.
constexpr QLatin1StringView kReleaseLevel{"$RELEASE_LEVEL"};

/// Reads the sources into one open, empty database.
class Builder
{
public:
    Builder(const Files& files, QString folder, Database& database)
        : m_files(files)
        , m_folder(std::move(folder))
        , m_database(database)
    {}

    void build()
    {
        makeTables();
        Transaction rows(m_database);
        for (const TableDef& table : m_tables) {
            fillTable(table);
        }
        rows.commit();
        makeQueries();
    }

private:
    [[nodiscard]] QString source(const QString& name) const { return path::join(m_folder, name); }

    [[nodiscard]] QString text(const QString& name) const
    {
        return textfile::decode(m_files.read(source(name)));
    }

    void refuse(const QString& name, const schema::Faults& faults) const
    {
        if (!faults.isEmpty()) {
            throw IoError(source(name), faults.join(u"; "_s));
        }
    }

    void makeTables()
    {
        const QString name = u"tables.txt"_s;
        schema::Tables read = schema::parseTables(text(name));
        refuse(name, read.faults);
        m_tables = std::move(read.tables);
        for (const TableDef& table : m_tables) {
            m_database.tableDefs().Append(table);
        }
    }

    void fillTable(const TableDef& table)
    {
        const QString name = u"rows/"_s + table.Name + u".txt"_s;
        if (!m_files.fileExists(source(name))) {
            return;
        }
        const QString level = QString::number(databaseLevelOfThisRelease());
        const schema::Rows read =
            schema::parseRows(text(name).replace(kReleaseLevel, level), table);
        refuse(name, read.faults);
        const auto set = m_database.OpenRecordset(table.Name);
        for (const std::vector<Value>& row : read.rows) {
            set->AddNew();
            for (qsizetype i = 0; i < read.columns.size(); ++i) {
                set->setValue(read.columns[i], row[size_t(i)]);
            }
            set->Update();
        }
    }

    void makeQueries()
    {
        for (const QString& file : m_files.names(source(u"queries"_s))) {
            if (path::extension(file) == "sql"_L1) {
                m_database
                    .CreateQueryDef(path::baseName(file),
                                    schema::queryStatement(text(u"queries/"_s + file)))
                    ->Close();
            }
        }
    }

    const Files& m_files;
    QString m_folder;
    Database& m_database;
    std::vector<TableDef> m_tables;
};

/// The database in the making, gone with it whatever happened.
class Draft
{
public:
    Draft(DBEngine& engine, Files& files, QString file)
        : m_engine(engine)
        , m_files(files)
        , m_file(std::move(file))
    {
        MLVCreateDB creator(engine, files);
        creator.targetFile = m_file;
        creator.CreateDB();
    }

    ~Draft()
    {
        m_engine.Release(m_file);
        m_files.remove(m_file);
    }

    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    [[nodiscard]] const QString& file() const { return m_file; }

private:
    DBEngine& m_engine;
    Files& m_files;
    QString m_file;
};

} // namespace

void buildShippedDatabase(DBEngine& engine,
                          Files& files,
                          const QString& schemaFolder,
                          const QString& target)
{
    const Draft draft(engine, files, target + u".new"_s);
    Builder(files, schemaFolder, *engine.OpenDatabase(draft.file())).build();
    engine.BackupDatabase(draft.file(), target);
}

} // namespace melovane
