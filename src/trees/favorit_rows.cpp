#include "trees/favorit_rows.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/trim_blanks.h"
#include "trees/tree_key.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Of a column among those of `select *`, or -1.
int placeOf(const std::vector<FieldDef>& columns, QStringView name)
{
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const FieldDef& column) {
        return column.Name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == columns.end() ? -1 : int(found - columns.begin());
}

/// A list from a row of `pl_name` or `VPL_GROUPNAME`.
class ListReader
{
public:
    ListReader(const std::vector<FieldDef>& columns, QStringView nameColumn)
        : m_nid(placeOf(columns, u"NID"))
        , m_grid(placeOf(columns, u"GRID"))
        , m_name(placeOf(columns, nameColumn))
        , m_isPlay(placeOf(columns, u"IsPlay"))
        , m_lock(placeOf(columns, u"Lock"))
        , m_activ(placeOf(columns, u"Activ"))
        , m_entries(placeOf(columns, u"anzahl"))
    {}

    /// False for a group without lists.
    [[nodiscard]] bool hasList(const WalkedRow& row) const { return !row.isNull(m_nid); }

    [[nodiscard]] ListState list(const WalkedRow& row) const
    {
        return {Pnid(row.number(m_nid)),
                group(row) == numberOf(kJingleGroup),
                row.text(m_name),
                row.number(m_isPlay) != 0,
                row.number(m_lock) != 0,
                row.number(m_activ) != 0,
                m_entries < 0 ? 0 : int(row.number(m_entries))};
    }

    [[nodiscard]] qint64 group(const WalkedRow& row) const { return row.number(m_grid); }

private:
    int m_nid;
    int m_grid;
    int m_name;
    int m_isPlay;
    int m_lock;
    int m_activ;
    int m_entries; ///< -1 in a source without counts
};

/// Lists as `pl_name` keeps them. They are walked at one go: another program may take one away
/// between finding it and reading it.
std::vector<ListState> readLists(Database& database, const QString& condition)
{
    std::vector<ListState> lists;
    const ListReader reader(database.tableDefs().Item(u"pl_name"_s).Fields, u"Name");
    database.walkRows("select * from pl_name where "_L1 + condition,
                      [&](const WalkedRow& row) { lists.push_back(reader.list(row)); });
    return lists;
}

TreeRow heading(const QString& key, const QString& text, const QString& picture)
{
    TreeRow row;
    row.key = key;
    row.text = text;
    row.picture = picture;
    row.heading = true;
    return row;
}

} // namespace

QString pictureOf(const ListState& list)
{
    if (list.lock) {
        return u"all.lock"_s;
    }
    if (list.isJingle) {
        return list.isPlay ? u"Tree.Jingle.Playlist.Activ"_s : u"Tree.Jingle.Playlist"_s;
    }
    return list.isPlay ? u"all.audio"_s : u"tree.playlist"_s;
}

TreeRow rowOf(const ListState& list)
{
    TreeRow row;
    const qint64 nid = numberOf(list.list);
    row.key = list.isJingle ? treekey::jingleList(nid) : treekey::playlist(nid);
    row.text = list.name;
    row.picture = pictureOf(list);
    row.level = 1;
    row.bold = list.isPlay;
    row.dimmed = !list.activ;
    row.movable = true;
    return row;
}

std::vector<TreeRow> readFavoritRows(Database& database, const QString& jingleCaption, bool all)
{
    std::vector<TreeRow> rows{heading(treekey::jingleGroup(), jingleCaption, u"tree.dir.jingle"_s)};
    const QString marked = all ? QString() : u" and activ=true"_s;
    for (const ListState& list : readLists(database, "grid=-1"_L1 + marked + " order by sid"_L1)) {
        rows.push_back(rowOf(list));
    }
    const std::vector<FieldDef> columns = database.queryDefs().Item(u"VPL_GROUPNAME"_s)->Fields();
    const int groupName = placeOf(columns, u"grname");
    const ListReader reader(columns, u"plname");
    qint64 group = 0;
    database.walkRows(u"select * from VPL_GROUPNAME"_s, [&](const WalkedRow& row) {
        // Told by number: two groups of the same name stay two.
        if (reader.group(row) != group) {
            group = reader.group(row);
            rows.push_back(heading(treekey::group(group), row.text(groupName), u"tree.dir"_s));
        }
        if (reader.hasList(row)) {
            const ListState list = reader.list(row);
            if (all || list.activ) {
                rows.push_back(rowOf(list));
            }
        }
    });
    return rows;
}

std::vector<ListState> readListsOfGroup(Database& database, qint64 group)
{
    return readLists(database, "GRID="_L1 + sql::number(group) + " order by sid asc"_L1);
}

std::optional<ListState> readList(Database& database, Pnid list)
{
    const std::vector<ListState> found =
        readLists(database, "nid="_L1 + sql::number(numberOf(list)));
    return found.empty() ? std::nullopt : std::optional(found.front());
}

std::vector<GroupState> readGroups(Database& database)
{
    std::vector<GroupState> groups;
    const std::vector<FieldDef> columns = database.tableDefs().Item(u"pl_group"_s).Fields;
    const int number = placeOf(columns, u"GRID");
    const int name = placeOf(columns, u"Name");
    const int activ = placeOf(columns, u"Activ");
    database.walkRows(u"select * from pl_group order by sid"_s, [&](const WalkedRow& row) {
        groups.push_back({row.number(number), row.text(name), row.number(activ) != 0});
    });
    return groups;
}

QString withoutCount(const QString& text)
{
    const qsizetype blank = text.lastIndexOf(u' ');
    const QStringView last = QStringView(text).mid(blank + 1);
    if (blank < 0 || !last.startsWith(u'[') || !last.endsWith(u']')) {
        return text;
    }
    return trimBlanks(QStringView(text).left(blank));
}

} // namespace melovane
