#include "trees/refresh_db.h"

#include "platform/db/database.h"
#include "platform/system/clock.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "trees/folder_rows.h"
#include "trees/library_counts.h"
#include "trees/soundex.h"
#include "trees/tree_statements.h"

#include <QScopeGuard>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

std::vector<TrackFolder> readFolders(Database& database)
{
    std::vector<TrackFolder> folders;
    const auto rows = database.OpenRecordset(u"v_tree_dir"_s);
    const int path = rows->fieldIndex(u"Path");
    const int driveName = rows->fieldIndex(u"DriveName");
    const int driveTyp = rows->fieldIndex(u"DriveTyp");
    const int count = rows->fieldIndex(u"anzahl");
    for (; !rows->Eof(); rows->MoveNext()) {
        folders.push_back({rows->value(path).toText(), rows->value(driveName).toText(),
                           rows->value(driveTyp).toLong(), rows->value(count).toLong()});
    }
    return folders;
}

/// Columns of `tree_dir` that are written.
QStringList folderColumns()
{
    return {u"rLevel"_s, u"Name"_s,    u"bname"_s, u"vName"_s, u"Drive"_s,
            u"anzahl"_s, u"BAnzahl"_s, u"Path"_s,  u"imgkey"_s};
}

std::vector<Value> cellsOf(const FolderRow& row)
{
    return {row.rLevel,
            row.Name,
            row.bname,
            row.vName,
            row.Drive,
            row.anzahl,
            row.BAnzahl ? Value(*row.BAnzahl) : Value(),
            row.Path,
            row.imgkey};
}

/// Does what treesql::addTypedValues() does, with values that were counted before.
void addTypedValues(Database& database,
                    const QString& column,
                    const std::vector<ValueCounter::Group>& values)
{
    Transaction transaction(database, u"config"_s);
    const auto rows =
        database.bulkInsert(u"config"_s, {u"Lang"_s, u"Name"_s, u"Value"_s, u"Beschreibung"_s});
    for (const ValueCounter::Group& value : values) {
        rows->add({-1, column, u"User"_s, value.names.first()});
    }
    rows->finish();
    transaction.commit();
}

} // namespace

RefreshDB::RefreshDB(Parts parts)
    : m_parts(std::move(parts))
{}

RefreshDB::~RefreshDB() = default;

void RefreshDB::countOnce(Database& library)
{
    m_counts.reset();
    try {
        m_counts = std::make_unique<LibraryCounts>(library);
    } catch (const DbError&) {
        return; // each operation counts by itself then, and only the one concerned fails
    }
}

bool RefreshDB::isCounted() const
{
    return m_counts && m_counts->areCurrent();
}

QString RefreshDB::parkedFile() const
{
    return path::join(m_parts.dataFolder, u"~tree.tmp");
}

void RefreshDB::yield() const
{
    if (m_parts.yield) {
        m_parts.yield();
    }
}

void RefreshDB::quiet(const QString& where, const std::function<void()>& step) const
{
    quietly(m_parts.sink, u"RefreshDB."_s + where, step);
}

std::unique_ptr<Database> RefreshDB::open() const
{
    return m_parts.engine.OpenDatabase(m_dbName);
}

void RefreshDB::PlnameCount()
{
    quiet(u"PlnameCount"_s, [this] {
        const auto database = open();
        const auto lists = database->OpenRecordset(u"select * from pl_name"_s);
        for (; !lists->Eof(); lists->MoveNext()) {
            const auto entries =
                database->OpenRecordset(u"select count(*) as anz from pl_all where pnid="_s +
                                        QString::number(lists->value(u"NID").toLong()));
            const Value count = entries->value(u"anz");
            if (count.toLong() != lists->value(u"anzahl").toLong()) {
                lists->Edit();
                lists->setValue(u"anzahl", count);
                lists->setValue(u"UpdateTime", m_parts.clock.now());
                lists->Update();
            }
        }
    });
}

void RefreshDB::MusicMatch()
{
    quiet(u"MusicMatch"_s, [this] {
        const auto database = open();
        // The first step is itself a write into the library.
        const bool isKnown = isCounted();
        const auto execute = [&](const QString& statement) {
            quiet(u"MusicMatch"_s, [&] { database->Execute(statement); });
        };
        execute(u"delete from config where value='User'"_s);
        for (std::size_t i = 0; i < kSelectionFields.size(); ++i) {
            if (isKnown) {
                quiet(u"MusicMatch"_s,
                      [&] { addTypedValues(*database, kSelectionFields[i], m_counts->typed(i)); });
            } else {
                execute(treesql::addTypedValues(kSelectionFields[i]));
            }
        }
        for (const auto column : kSelectionFields) {
            execute(treesql::dropKnownValues(column));
        }
    });
}

/// The old rows stay when anything throws, and with them the favourites.
void RefreshDB::refill(Database& database, const Refill& refill) const
{
    Transaction transaction(database, refill.table);
    {
        // Behind the commit it could be that of another rebuild.
        const auto cleanUp = qScopeGuard([&] { m_parts.files.remove(parkedFile()); });
        park(database, refill);
        database.Execute(treesql::empty(refill.table));
        refill.fill(database);
        restore(database, refill);
    }
    transaction.commit();
}

void RefreshDB::park(Database& database, const Refill& refill) const
{
    if (refill.keys.isEmpty()) {
        return;
    }
    std::vector<ParkedFavorit> favorits;
    const auto rows = database.OpenRecordset(treesql::favorits(refill.table));
    for (; !rows->Eof(); rows->MoveNext()) {
        ParkedFavorit& favorit = favorits.emplace_back();
        for (const QString& key : refill.keys) {
            favorit.names.append(rows->value(key).toText());
        }
        favorit.stamp = parkedStamp(rows->value(u"tstamp"));
    }
    m_parts.files.writeWhole(parkedFile(), parkedText(favorits).toUtf8());
}

void RefreshDB::restore(Database& database, const Refill& refill) const
{
    if (refill.keys.isEmpty()) {
        return;
    }
    const QString text = QString::fromUtf8(m_parts.files.read(parkedFile()));
    for (const ParkedFavorit& favorit : readParked(text, int(refill.keys.size()))) {
        const auto step = [&] { database.Execute(refill.restore(favorit)); };
        if (refill.skipsErrors) {
            quiet(u"TreeDir"_s, step);
        } else {
            step();
        }
    }
}

void RefreshDB::fillNames(Database& database, const NamedFill& fill) const
{
    const LibraryCounts::Names* known = isCounted() ? m_counts->names(fill.columns) : nullptr;
    LibraryCounts::Names counted;
    if (!known) {
        ValueCounter counter(fill.columns);
        countTracks(database, {&counter});
        counted = counter.groups();
        known = &counted;
    }
    QStringList columns{u"Name"_s, u"anzahl"_s, u"imgkey"_s};
    if (fill.columns.size() > 1) {
        columns.prepend(u"Genre"_s);
    }
    const auto rows = database.bulkInsert(fill.table, columns);
    for (const ValueCounter::Group& group : *known) {
        std::vector<Value> row(group.names.begin(), group.names.end());
        row.insert(row.end(), {group.count, fill.imgkey});
        rows->add(std::move(row));
    }
    rows->finish();
}

/// Counts by itself what the stored query would group by comparing, many times faster. A query that
/// says something else is run.
void RefreshDB::refillStored(Database& database, const NamedFill& fill) const
{
    const bool hasGenre = fill.columns.size() > 1;
    const auto rows = [&](Database& target) {
        if (treesql::isShipped(target, fill.query)) {
            fillNames(target, fill);
        } else {
            target.Execute(fill.query);
        }
    };
    const auto restore = [&](const ParkedFavorit& favorit) {
        return hasGenre ? treesql::restoreGenreName(favorit)
                        : treesql::restoreName(fill.table, favorit);
    };
    refill(database,
           {.table = fill.table,
            .keys = hasGenre ? QStringList{u"Genre"_s, u"Name"_s} : QStringList{u"Name"_s},
            .fill = rows,
            .restore = restore});
}

void RefreshDB::refillQuietly(const QString& where, const std::vector<NamedFill>& fills) const
{
    quiet(where, [&] {
        const auto database = open();
        yield();
        for (const NamedFill& fill : fills) {
            refillStored(*database, fill);
        }
    });
}

void RefreshDB::TreeGenre()
{
    refillQuietly(u"TreeGenre"_s,
                  {{u"tree_genre"_s, {u"Genre"_s}, u"genre"_s, u"UPDATE_TREE_GENRE"_s},
                   {u"tree_genre_interpret"_s,
                    {u"Genre"_s, u"Interpret"_s},
                    u"interpret"_s,
                    u"UPDATE_TREE_GENRE_interpret"_s}});
}

void RefreshDB::TreeAlbum()
{
    refillQuietly(u"TreeAlbum"_s,
                  {{u"tree_album"_s, {u"Album"_s}, u"album"_s, u"UPDATE_TREE_ALBUM"_s}});
}

void RefreshDB::TreeInterpret()
{
    refillQuietly(
        u"TreeInterpret"_s,
        {{u"tree_interpret"_s, {u"Interpret"_s}, u"interpret"_s, u"UPDATE_TREE_interpret"_s}});
}

void RefreshDB::TreeTable(const QString& column)
{
    const auto named = [&](QString statement) { return statement.replace(u"table"_s, column); };
    const auto database = open();
    yield();
    refill(*database,
           {.table = named(u"tree_table"_s),
            .keys = {u"name"_s},
            .fill =
                [&](Database& target) {
                    fillNames(target, {named(u"tree_table"_s), {column}, named(u"Tree.table"_s)});
                },
            .restore =
                [&](const ParkedFavorit& favorit) {
                    return named(treesql::restoreName(u"tree_table"_s, favorit));
                }});
}

void RefreshDB::TreeTableImportDate()
{
    const auto database = open();
    refill(*database, {.table = u"tree_importdate"_s,
                       .fill = [this](Database& target) { fillImportDates(target); }});
}

void RefreshDB::fillImportDates(Database& database) const
{
    DayCounter counter;
    const bool isKnown = isCounted();
    if (!isKnown) {
        countTracks(database, {&counter});
    }
    const auto days = isKnown ? m_counts->days() : counter.groups();
    if (!days) {
        database.Execute(treesql::fillImportDate());
        return;
    }
    const auto rows =
        database.bulkInsert(u"tree_importdate"_s, {u"Name"_s, u"anzahl"_s, u"imgkey"_s});
    for (const DayCounter::Group& day : *days) {
        rows->add({day.name, day.count, u"Tree.Imprtdate"_s});
    }
    rows->finish();
}

void RefreshDB::TreeDir()
{
    quiet(u"TreeDir"_s, [this] {
        const auto database = open();
        yield();
        refill(*database, {.table = u"tree_dir"_s,
                           .keys = {u"Path"_s},
                           .fill = [this](Database& target) { writeFolders(target); },
                           .restore = treesql::restorePath,
                           .skipsErrors = true});
    });
}

std::vector<TrackFolder> RefreshDB::folders(Database& database) const
{
    if (!treesql::isShipped(database, u"v_tree_dir"_s)) {
        return readFolders(database);
    }
    if (isCounted()) {
        return m_counts->folders();
    }
    FolderCounter counter;
    countTracks(database, {&counter});
    return counter.folders();
}

void RefreshDB::writeFolders(Database& database) const
{
    const std::vector<TrackFolder> tracked = folders(database);
    std::vector<FolderRow> rows = folderRows(tracked);
    fillTotals(rows, tracked);
    const auto added = database.bulkInsert(u"TREE_DIR"_s, folderColumns());
    added->whenRefused = [this](const DbError& error) {
        quiet(u"TreeDir"_s, [&] { throw error; });
    };
    for (const FolderRow& row : rows) {
        added->add(cellsOf(row));
    }
    added->finish();
}

QString RefreshDB::Soundex(const QString& word)
{
    return soundexOf(word);
}

} // namespace melovane
