#include "trees/rebuild_trees.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "store/check_database.h"

#include <algorithm>
#include <array>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

struct TreeOperation
{
    QLatin1StringView word; ///< as `ChangeTree` names it: keep
    void (RefreshDB::*rebuild)();
};

constexpr std::array kTrees{
    TreeOperation{"Dir"_L1, &RefreshDB::TreeDir},
    TreeOperation{"Genre"_L1, &RefreshDB::TreeGenre},
    TreeOperation{"Album"_L1, &RefreshDB::TreeAlbum},
    TreeOperation{"Interpret"_L1, &RefreshDB::TreeInterpret},
};

/// Columns with a tree of one generic shape.
constexpr std::array kColumns{"Situation"_L1, "Stimmung"_L1, "Tempo"_L1, "Kategorie"_L1, "User1"_L1,
                              "User2"_L1,     "User3"_L1,    "User4"_L1, "User5"_L1};

const TreeOperation* operationOf(const QString& word)
{
    const auto* const found =
        std::find_if(kTrees.begin(), kTrees.end(), [&](const TreeOperation& tree) {
            return word.compare(tree.word, Qt::CaseInsensitive) == 0;
        });
    return found == kTrees.end() ? nullptr : found;
}

} // namespace

RebuildTrees::RebuildTrees(RefreshDB::Parts parts, QString dbName)
    : m_parts(std::move(parts))
    , m_dbName(std::move(dbName))
    , m_trees(
          {.engine = m_parts.engine,
           .files = m_parts.files,
           .clock = m_parts.clock,
           .dataFolder = m_parts.dataFolder,
           .yield = m_parts.yield,
           .sink = [this](const QString&, const QString& what) { m_result.failures.append(what); }})
{
    m_trees.SetDbName(m_dbName);
}

bool RebuildTrees::isTree(const QString& word)
{
    return operationOf(word) != nullptr;
}

/// True when tables were made anew and are empty. What cannot be made fails again when it is
/// filled.
bool RebuildTrees::repairTables()
{
    CheckDatabase check(m_parts.engine, m_parts.files, m_parts.clock,
                        {.dbName = m_dbName, .dataFolder = m_parts.dataFolder, .programName = {}},
                        {});
    return check.checkTreeTables() != 0;
}

void RebuildTrees::rebuild(const QString& name, const std::function<void()>& operation)
{
    const qsizetype failures = m_result.failures.size();
    try {
        operation();
    } catch (const DbError& error) {
        m_result.failures.append(error.text());
    } catch (const IoError& error) {
        m_result.failures.append(QString::fromUtf8(error.what()));
    }
    if (m_result.failures.size() == failures) {
        m_result.rebuilt.append(name);
    }
}

void RebuildTrees::rebuildTree(Database& library, const QString& tree)
{
    const TreeOperation* const operation = operationOf(tree);
    if (!operation) {
        return;
    }
    const qint64 version = library.fileVersion();
    const qsizetype rebuilt = m_result.rebuilt.size();
    rebuild(operation->word, [&] { (m_trees.*operation->rebuild)(); });
    if (m_result.rebuilt.size() > rebuilt) {
        clearNote(library, operation->word, version);
    }
}

/// An edit that came while the rows were counted is not in them, and it was not noted anew as long
/// as its tree still was.
void RebuildTrees::clearNote(Database& library, const QString& tree, qint64 version)
{
    Transaction transaction(library);
    if (library.fileVersion() == version) {
        library.Execute(u"delete from ChangeTree where TreeName="_s + sql::text(tree));
        transaction.commit();
    }
}

void RebuildTrees::rebuildRest()
{
    for (const auto column : kColumns) {
        rebuild(column, [&] { m_trees.TreeTable(column); });
    }
    rebuild(u"ImportDate"_s, [&] { m_trees.TreeTableImportDate(); });
    rebuild(u"PlnameCount"_s, [&] { m_trees.PlnameCount(); });
    rebuild(u"MusicMatch"_s, [&] { m_trees.MusicMatch(); });
}

QStringList RebuildTrees::notedTrees()
{
    QStringList words;
    const auto database = m_parts.engine.OpenDatabase(m_dbName);
    const auto rows = database->OpenRecordset(u"select TreeName from ChangeTree"_s);
    for (; !rows->Eof(); rows->MoveNext()) {
        words.append(rows->value(0).toText());
    }
    return words;
}

void RebuildTrees::run(const std::function<void(Database& library)>& work)
{
    m_result = {};
    try {
        // Opened before any tree is looked at, and never used for one: its version tells writes of
        // others into the library alone.
        const auto library = m_parts.engine.OpenDatabase(m_dbName);
        work(*library);
    } catch (const DbError& error) {
        m_result.failures.append(error.text());
    }
}

RebuildTrees::Result RebuildTrees::run(Scope scope)
{
    run([&](Database& library) {
        const bool all = repairTables() || scope == Scope::All;
        const QStringList noted = notedTrees();
        if (all) {
            m_trees.countOnce(library);
        }
        for (const TreeOperation& tree : kTrees) {
            if (all || noted.contains(tree.word, Qt::CaseInsensitive)) {
                rebuildTree(library, tree.word);
            }
        }
        if (all) {
            rebuildRest();
        }
    });
    return std::exchange(m_result, {});
}

RebuildTrees::Result RebuildTrees::runOne(const QString& tree)
{
    if (!isTree(tree)) {
        return {};
    }
    run([&](Database& library) {
        const bool isEmpty = repairTables();
        for (const TreeOperation& each : kTrees) {
            if (isEmpty || &each == operationOf(tree)) {
                rebuildTree(library, each.word);
            }
        }
        if (isEmpty) {
            rebuildRest();
        }
    });
    return std::exchange(m_result, {});
}

} // namespace melovane
