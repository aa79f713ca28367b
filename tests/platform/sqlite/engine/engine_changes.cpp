#include "platform/sqlite/engine/engine_changes.h"

#include "platform/sqlite/engine/engine_fixture.h"

#include <QDir>
#include <QFile>

#include <ostream>

namespace melovane::test {

namespace {

const QString kMain = u"melovane.mdb"_s;
const QString kSide = u"melovane.tree.mdb"_s;
const QString kBackup = u"backup.mdb"_s;

constexpr int kTracks = 60;

void add(Recordset& set, const std::vector<std::pair<QString, Value>>& cells)
{
    set.AddNew();
    for (const auto& [name, value] : cells) {
        set.setValue(name, value);
    }
    set.Update();
}

void makeMain(Database& database, const QString& side)
{
    constexpr auto kLong = FieldType::Long;
    TableDefs& tables = database.tableDefs();
    TableDef tracks =
        keyedTable(u"db_all"_s, {textField(u"FID"_s, 12), textField(u"Titel"_s, 255),
                                 textField(u"Interpret"_s, 255), field(u"DEL"_s, kLong)});
    tracks.Indexes.push_back({u"Titel"_s, {u"Titel"_s}, false, false});
    tables.Append(tracks);
    tables.Append(keyedTable(u"pl_all"_s, {autoNumber(u"PLID"_s), field(u"PNID"_s, kLong),
                                           field(u"SID"_s, kLong), textField(u"FID"_s, 12),
                                           textField(u"MixIn"_s, 255)}));
    tables.Append(table(u"genre"_s, {field(u"Genre_ID"_s, kLong), textField(u"Name"_s, 50)}));
    tables.Append(link(u"TREE_DIR"_s, side));
    database.CreateQueryDef(
        u"VPL_ALL"_s,
        u"select pl_all.plid, pl_all.sid, pl_all.fid, pl_all.mixin, db_all.titel, "
        "db_all.interpret from pl_all inner join db_all on pl_all.fid = db_all.fid"_s);
    database.CreateQueryDef(u"QU_Genre"_s, u"parameters g Long, n Text; "
                                           "insert into genre (Genre_ID, Name) values (g, n)"_s);
    for (int i = 0; i < kTracks; ++i) {
        database.Execute(
            u"insert into db_all (FID, Titel, Interpret, DEL) values ('%1', 'Title %1 %2', 'A', 0)"_s
                .arg(i)
                .arg(QString(80, u'x')));
        database.Execute(u"insert into pl_all (PNID, SID, FID) values (1, %1, '%1')"_s.arg(i));
    }
    database.Execute(u"insert into genre values (1, 'Rock')"_s);
}

void makeSide(Database& database)
{
    database.tableDefs().Append(
        keyedTable(u"TREE_DIR"_s, {autoNumber(u"id"_s), textField(u"Name"_s, 255)}));
    for (int i = 0; i < 20; ++i) {
        database.Execute(u"insert into TREE_DIR (Name) values ('/music/%1')"_s.arg(i));
    }
}

QString described(const TableDef& table)
{
    QStringList parts{table.Name, table.Connect.isEmpty() ? u"table"_s : u"link"_s};
    for (const FieldDef& field : table.Fields) {
        parts.append(u"%1 %2(%3)"_s.arg(field.Name).arg(int(field.Type)).arg(field.Size));
    }
    for (const IndexDef& index : table.Indexes) {
        parts.append(u"index %1 on %2"_s.arg(index.Name, index.Fields.join(u',')));
    }
    return parts.join(u' ');
}

/// Tables with their rows, links, queries: what a user of the database can see of it.
QString described(Database& database)
{
    QStringList lines{u"database"_s};
    for (const TableDef& table : database.tableDefs().All()) {
        lines.append(described(table));
        if (!table.isLink()) {
            QStringList rows = rowsOf(database, u"select * from [%1]"_s.arg(table.Name));
            rows.sort();
            lines.append(rows);
        }
    }
    for (const QString& name : database.queryDefs().Names()) {
        lines.append(name + u": "_s + database.queryDefs().Item(name)->SQL());
    }
    return lines.join(u'\n');
}

// --- The operations

void addRow(Scene& scene)
{
    add(*scene.db().OpenRecordset(u"db_all"_s),
        {{u"FID"_s, u"new"_s}, {u"Titel"_s, u"A new one"_s}});
}

void editRow(Scene& scene)
{
    const auto set = scene.db().OpenRecordset(u"select * from db_all where fid='7'"_s);
    set->Edit();
    set->setValue(u"Titel", u"Changed"_s);
    set->setValue(u"DEL", -1);
    set->Update();
}

void deleteRow(Scene& scene)
{
    scene.db().OpenRecordset(u"select * from db_all where fid='7'"_s)->Delete();
}

void addRowToAJoin(Scene& scene)
{
    add(*scene.db().OpenRecordset(u"VPL_ALL"_s), {{u"fid"_s, u"3"_s}, {u"sid"_s, 500}});
}

void editBothSidesOfAJoin(Scene& scene)
{
    const auto set = scene.db().OpenRecordset(u"select * from VPL_ALL where plid=5"_s);
    set->Edit();
    set->setValue(u"mixin", u"1,2,3"_s);
    set->setValue(u"titel", u"Changed by the list"_s);
    set->Update();
}

void transactionOfSeveral(Scene& scene)
{
    Transaction transaction(scene.db());
    scene.db().Execute(u"update pl_all set sid=sid+2 where sid>10"_s);
    add(*scene.db().OpenRecordset(u"pl_all"_s), {{u"SID"_s, 11}, {u"FID"_s, u"1"_s}});
    scene.db().Execute(u"update genre set name='counted' where genre_id=1"_s);
    scene.db().Execute(u"delete from db_all where fid='9'"_s);
    transaction.commit();
}

void nestedTransaction(Scene& scene)
{
    Transaction outer(scene.db());
    scene.db().Execute(u"update genre set name='outer' where genre_id=1"_s);
    {
        Transaction undone(scene.db());
        scene.db().Execute(u"delete from pl_all"_s);
        scene.db().tableDefs().Append(table(u"undone"_s, {textField(u"a"_s, 5)}));
    }
    {
        Transaction kept(scene.db());
        scene.db().Execute(u"insert into genre values (2, 'inner')"_s);
        kept.commit();
    }
    outer.commit();
}

void careOfErrors(Scene& scene)
{
    // As much of the suite does it: a failed statement is overlooked and the next one runs.
    Transaction transaction(scene.db());
    std::optional<DbError> first;
    for (int i = 100; i < 106; ++i) {
        try {
            scene.db().Execute(u"insert into genre values (%1, 'row')"_s.arg(i));
        } catch (const DbError& error) {
            first = error;
        }
    }
    if (first) {
        throw DbError(*first);
    }
    transaction.commit();
}

void parameterQuery(Scene& scene)
{
    const auto query = scene.db().queryDefs().Item(u"QU_Genre"_s);
    query->SetParameter(u"g"_s, 3);
    query->SetParameter(u"n"_s, u"Jazz"_s);
    query->Execute();
}

void fillFromMainToSide(Scene& scene)
{
    scene.db().Execute(u"insert into TREE_DIR (Name) select titel from db_all"_s);
}

void transactionOverBothFiles(Scene& scene)
{
    Transaction transaction(scene.db());
    scene.db().Execute(u"delete from TREE_DIR"_s);
    scene.db().Execute(u"insert into TREE_DIR (Name) values ('/new')"_s);
    scene.db().Execute(u"update genre set name='both'"_s);
    transaction.commit();
}

void cloneOfATable(Scene& scene)
{
    const auto side = scene.engine().OpenDatabase(scene.path(kSide));
    TableDef clone = scene.db().tableDefs().Item(u"db_all"_s);
    clone.Name = u"X_db_all"_s;
    side->tableDefs().Append(clone);
}

void changeAndCloseTheLast(Scene& scene)
{
    scene.db().Execute(u"update db_all set titel=titel+' again'"_s);
    scene.close();
}

std::function<void(Scene&)> execute(const QString& statement)
{
    return [statement](Scene& scene) { scene.db().Execute(statement); };
}

std::vector<EngineChange> changesOfRows()
{
    return {
        {"AddRow", addRow},
        {"EditRow", editRow},
        {"DeleteRow", deleteRow},
        {"AddRowToAJoin", addRowToAJoin},
        {"EditBothSidesOfAJoin", editBothSidesOfAJoin},
        {"Insert", execute(u"insert into genre values (2, 'Pop')"_s)},
        {"InsertSelect",
         execute(u"insert into db_all (FID, Titel) select 'c'+fid, titel from db_all"_s)},
        {"Update", execute(u"update db_all set titel='x'+titel, interpret=fid"_s)},
        {"UpdateThroughAJoin",
         execute(u"update VPL_ALL as pl_all set pl_all.mixin='5' where pl_all.titel like '*1*'"_s)},
        {"Delete", execute(u"delete * from pl_all where sid>20"_s)},
        {"ParameterQuery", parameterQuery},
        {"Transaction", transactionOfSeveral},
        {"NestedTransaction", nestedTransaction},
        {"TransactionWhoseErrorsAreOverlooked", careOfErrors},
        {"FillSideFile", fillFromMainToSide},
        {"TransactionOverBothFiles", transactionOverBothFiles},
        {"ChangeAndCloseTheLast", changeAndCloseTheLast},
    };
}

std::vector<EngineChange> changesOfTheCatalogue()
{
    return {
        {"CreateTable",
         [](Scene& scene) {
             scene.db().tableDefs().Append(
                 keyedTable(u"t"_s, {autoNumber(u"id"_s), textField(u"n"_s, 9)}));
         }},
        {"AddColumn", execute(u"alter table db_all add column bpm text(5)"_s)},
        {"AlterColumn", execute(u"alter table genre alter column name text(99)"_s)},
        {"DropColumn", execute(u"alter table db_all drop column interpret"_s)},
        {"CreateIndex", execute(u"create index byfid on pl_all (fid)"_s)},
        {"DropIndex", execute(u"drop index titel on db_all"_s)},
        {"DropTable", [](Scene& scene) { scene.db().tableDefs().Delete(u"db_all"_s); }},
        {"AppendQuery",
         [](Scene& scene) {
             (void)scene.db().CreateQueryDef(u"VNEW"_s, u"select * from genre"_s);
         }},
        {"DeleteQuery", [](Scene& scene) { scene.db().queryDefs().Delete(u"VPL_ALL"_s); }},
        {"AppendLink",
         [](Scene& scene) {
             scene.db().tableDefs().Append(link(u"TREE_ALBUM"_s, scene.path(kSide)));
         }},
        {"DeleteLink", [](Scene& scene) { scene.db().tableDefs().Delete(u"TREE_DIR"_s); }},
        {"CloneOfATable", cloneOfATable},
    };
}

std::vector<EngineChange> changesOfWholeFiles()
{
    return {
        {"CreateDatabase",
         [](Scene& scene) {
             (void)scene.engine().Workspaces(0).CreateDatabase(scene.path(u"new.mdb"_s), {});
         },
         false},
        {"Backup",
         [](Scene& scene) {
             scene.engine().BackupDatabase(scene.path(kMain), scene.path(u"copy.mdb"_s));
         },
         false},
        {"BackupOverAnother",
         [](Scene& scene) {
             scene.engine().BackupDatabase(scene.path(kMain), scene.path(kBackup));
         },
         false},
    };
}

} // namespace

Scene::Scene()
{
    make();
}

void Scene::make()
{
    {
        const auto side = engine().Workspaces(0).CreateDatabase(path(kSide), {});
        makeSide(*side);
        const auto main = m_engine->Workspaces(0).CreateDatabase(path(kMain), {});
        makeMain(*main, path(kSide));
        m_engine->BackupDatabase(path(kMain), path(kBackup));
        main->Execute(u"insert into genre values (9, 'after the backup')"_s);
    }
    close();
    const QMap<QString, QString> all = content();
    EXPECT_EQ(damage(), QString());
    for (const QString& name : databases()) {
        m_made.insert(name, m_folder.read(name));
    }
    m_madeContent = all;
}

void Scene::reset()
{
    close();
    for (const QString& name : QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden)) {
        QFile::remove(path(name));
    }
    for (auto file = m_made.cbegin(); file != m_made.cend(); ++file) {
        m_folder.write(file.key(), file.value());
    }
}

void Scene::close()
{
    m_database.reset();
    m_engine.reset();
}

DBEngine& Scene::engine()
{
    if (!m_engine) {
        m_engine = sqlite::makeEngine(m_clock);
    }
    return *m_engine;
}

Database& Scene::db()
{
    if (!m_database) {
        m_database = engine().OpenDatabase(path(kMain));
    }
    return *m_database;
}

QStringList Scene::databases() const
{
    return QDir(m_folder.path()).entryList({u"*.mdb"_s}, QDir::Files);
}

/// Most operations change one file, and looking at the others takes the time of the loops.
bool Scene::isAsMade(const QString& name) const
{
    const bool hasJournal =
        QFile::exists(path(name + u"-wal"_s)) || QFile::exists(path(name + u"-journal"_s));
    return !hasJournal && m_made.contains(name) && m_folder.read(name) == m_made.value(name);
}

QMap<QString, QString> Scene::content() const
{
    QMap<QString, QString> result;
    FakeClock clock;
    const auto engine = sqlite::makeEngine(clock);
    for (const QString& name : databases()) {
        if (isAsMade(name)) {
            result.insert(name, m_madeContent.value(name));
            continue;
        }
        try {
            const auto database = engine->OpenDatabase(path(name));
            result.insert(name, described(*database));
        } catch (const DbError& error) {
            result.insert(name, u"error %1 %2"_s.arg(error.number()).arg(error.text()));
        }
    }
    return result;
}

QString Scene::damage() const
{
    QString result;
    for (const QString& name : databases()) {
        const QString found = isAsMade(name) ? u"ok"_s : integrityOf(path(name));
        if (found != u"ok"_s) {
            result += name + u": "_s + found + u'\n';
        }
    }
    return result;
}

QStringList Scene::litter() const
{
    return QDir(m_folder.path()).entryList({u"*.new*"_s, u"*-journal"_s}, QDir::Files);
}

void PrintTo(const EngineChange& change, std::ostream* out)
{
    *out << change.name;
}

const std::vector<EngineChange>& engineChanges()
{
    static const std::vector<EngineChange> all = [] {
        std::vector<EngineChange> list = changesOfRows();
        for (const auto& more : {changesOfTheCatalogue(), changesOfWholeFiles()}) {
            list.insert(list.end(), more.begin(), more.end());
        }
        return list;
    }();
    return all;
}

} // namespace melovane::test
