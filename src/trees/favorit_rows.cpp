#include "trees/favorit_rows.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/trim_blanks.h"
#include "trees/tree_key.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A list from a row of `pl_name` or `VPL_GROUPNAME`.
class ListReader
{
public:
    ListReader(const Recordset& rows, QStringView nameColumn)
        : m_rows(rows)
        , m_nid(rows.fieldIndex(u"NID"))
        , m_grid(rows.fieldIndex(u"GRID"))
        , m_name(rows.fieldIndex(nameColumn))
        , m_isPlay(rows.fieldIndex(u"IsPlay"))
        , m_lock(rows.fieldIndex(u"Lock"))
        , m_activ(rows.fieldIndex(u"Activ"))
        , m_entries(rows.fieldIndex(u"anzahl"))
    {}

    /// Null for a group without lists.
    [[nodiscard]] bool hasList() const { return !m_rows.value(m_nid).isNull(); }

    [[nodiscard]] ListState list() const
    {
        return {Pnid(m_rows.value(m_nid).toLong()),
                group() == numberOf(kJingleGroup),
                m_rows.value(m_name).toText(),
                m_rows.value(m_isPlay).toBool(),
                m_rows.value(m_lock).toBool(),
                m_rows.value(m_activ).toBool(),
                m_entries < 0 ? 0 : m_rows.value(m_entries).toLong()};
    }

    [[nodiscard]] qint64 group() const { return m_rows.value(m_grid).toLong(); }

private:
    const Recordset& m_rows;
    int m_nid;
    int m_grid;
    int m_name;
    int m_isPlay;
    int m_lock;
    int m_activ;
    int m_entries; ///< -1 in a source without counts
};

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
    const auto jingles = database.OpenRecordset(u"select * from pl_name where grid=-1"_s + marked +
                                                u" order by sid"_s);
    for (const ListReader reader(*jingles, u"Name"); !jingles->Eof(); jingles->MoveNext()) {
        rows.push_back(rowOf(reader.list()));
    }
    const auto lists = database.OpenRecordset(u"select * from VPL_GROUPNAME"_s);
    const int groupName = lists->fieldIndex(u"grname");
    qint64 group = 0;
    for (const ListReader reader(*lists, u"plname"); !lists->Eof(); lists->MoveNext()) {
        // Told by number: two groups of the same name stay two.
        if (reader.group() != group) {
            group = reader.group();
            rows.push_back(
                heading(treekey::group(group), lists->value(groupName).toText(), u"tree.dir"_s));
        }
        if (reader.hasList()) {
            const ListState list = reader.list();
            if (all || list.activ) {
                rows.push_back(rowOf(list));
            }
        }
    }
    return rows;
}

std::vector<ListState> readListsOfGroup(Database& database, qint64 group)
{
    std::vector<ListState> result;
    const auto lists = database.OpenRecordset(u"select * from pl_name where GRID="_s +
                                              sql::number(group) + u" order by sid asc"_s);
    for (const ListReader reader(*lists, u"Name"); !lists->Eof(); lists->MoveNext()) {
        result.push_back(reader.list());
    }
    return result;
}

std::optional<ListState> readList(Database& database, Pnid list)
{
    const auto row =
        database.OpenRecordset(u"select * from pl_name where nid="_s + sql::number(numberOf(list)));
    if (row->Eof()) {
        return {};
    }
    return ListReader(*row, u"Name").list();
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
