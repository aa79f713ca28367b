#include "support/suite_fixture.h"

#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/path_text.h"
#include "store/shipped_database.h"

#include <QFile>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kMain = u"melovane.mdb"_s;
const QString kTemp = u"melovane.temp.mdb"_s;
const QString kTree = u"melovane.tree.mdb"_s;

/// The shipped database and a first start's side files, made once per test process and copied by
/// every suite: the first start writes more than a test should wait for.
class Template
{
public:
    Template()
    {
        const FakeClock clock;
        const auto engine = sqlite::makeEngine(clock);
        LinuxFiles files;
        buildShippedDatabase(*engine, files, schemaFolder(), file(kMain));
        engine->Release(file(kMain));
        EXPECT_TRUE(QFile::copy(file(kMain), shipped()));
        CheckDatabase check(*engine, files, clock, {file(kMain), m_folder.path(), u"Test"_s}, {});
        check.checkTempTables();
        EXPECT_EQ(check.checkTreeTables(), -1);
        for (const QString& name : {kMain, kTemp, kTree}) {
            engine->Release(file(name));
        }
    }

    [[nodiscard]] QString file(const QString& name) const { return m_folder.file(name); }

    [[nodiscard]] QString shipped() const { return file(u"shipped.mdb"_s); }

private:
    TempFolder m_folder;
};

const Template& madeOnce()
{
    static const Template made;
    return made;
}

/// Points the links of a copied database at the side files beside it.
void relink(Database& database, const QString& folder)
{
    Transaction change(database);
    for (const TableDef& table : database.tableDefs().All()) {
        if (!table.isLink()) {
            continue;
        }
        TableDef link;
        link.Name = table.Name;
        link.Attributes = table.Attributes;
        link.Connect = u";Database="_s + path::join(folder, path::fileName(table.Connect));
        link.SourceTableName = table.SourceTableName;
        database.tableDefs().Delete(table.Name);
        database.tableDefs().Append(link);
    }
    change.commit();
}

} // namespace

QString resourceFolder()
{
    return QStringLiteral(MLV_RESOURCE_FOLDER);
}

QString schemaFolder()
{
    return resourceFolder() + u"/schema"_s;
}

Suite::Suite(SideFiles sideFiles)
    : files(folders.files())
    , engine(sqlite::makeEngine(clock))
    , library(*engine, dbName())
{
    EXPECT_TRUE(QFile::copy(resourceFolder() + u"/melovane.ini"_s, file(u"melovane.ini"_s)));
    if (sideFiles == SideFiles::None) {
        EXPECT_TRUE(QFile::copy(madeOnce().shipped(), dbName()));
        return;
    }
    for (const QString& name : {kMain, kTemp, kTree}) {
        EXPECT_TRUE(QFile::copy(madeOnce().file(name), file(name)));
    }
    relink(*open(), dataFolder());
}

QString Suite::file(const QString& name) const
{
    return path::join(dataFolder(), name);
}

QString Suite::write(const QString& name, const QByteArray& bytes) const
{
    return folders.install(name, bytes);
}

QByteArray Suite::read(const QString& name) const
{
    return files.read(file(name), 1 << 30);
}

CheckDatabase Suite::check(const QString& program)
{
    return {
        *engine,
        files,
        clock,
        {dbName(), dataFolder(), program},
        [this](const QString& where, const QString& what) { log.append(where + u": "_s + what); }};
}

Value Suite::value(const QString& statement) const
{
    const auto database = open();
    const auto set = database->OpenRecordset(statement);
    return set->Eof() ? Value() : set->value(0);
}

QStringList Suite::column(const QString& statement) const
{
    const auto database = open();
    QStringList result;
    for (const auto set = database->OpenRecordset(statement); !set->Eof(); set->MoveNext()) {
        result.append(set->value(0).toText());
    }
    return result;
}

} // namespace melovane::test
