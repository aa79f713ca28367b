#include "playlists/list_catalogue.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "playlists/list_edit.h"
#include "playlists/name_format.h"
#include "playlists/playlist_table.h"
#include "store/row_statements.h"

#include <QHash>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Position of a new group or list: the end.
constexpr int kLastPosition = 1'000'000;

QString cleaned(QString name)
{
    return name.replace(u'\'', u'*');
}

template <typename Id> QString number(Id id)
{
    return sql::number(numberOf(id));
}

bool hasColumn(Database& database, const QString& column)
{
    const QStringList columns = columnsOf(database, kListTable);
    return columns.contains(column, Qt::CaseInsensitive);
}

} // namespace

ListCatalogue::ListCatalogue(PlaylistParts parts)
    : m_parts(std::move(parts))
{}

void ListCatalogue::quiet(const QString& where, const std::function<void(Database&)>& work) const
{
    quietly(m_parts.sink, where,
            [&] { work(*m_parts.engine.OpenDatabase(m_parts.settings.DbName())); });
}

bool ListCatalogue::deleteGroup(GroupId group)
{
    bool isEmpty = false;
    quiet(u"KannGroupDel"_s, [&](Database& database) {
        const auto lists = database.OpenRecordset(
            u"select count(*) as anz from pl_group,pl_name where pl_group.grid=pl_name.grid "
            " and pl_group.grid="_s +
            number(group));
        if (lists->value(u"anz").toLong() != 0) {
            return;
        }
        const QString row = u"grid="_s + number(group);
        const auto name = database.OpenRecordset(u"select name from pl_group where "_s + row);
        ListEdit edit(m_parts.history, database, ListAction::DeleteGroup, Pnid{});
        edit.setName(name->Eof() ? QString() : name->value(0).toText());
        edit.removes(kGroupTable, row);
        database.Execute(u"delete from pl_group where "_s + row);
        edit.commit();
        isEmpty = true;
    });
    return isEmpty;
}

GroupId ListCatalogue::newGroup(const QString& name)
{
    GroupId group{};
    quiet(u"CreateNewGroup"_s, [&](Database& database) {
        const auto groups = database.OpenRecordset(u"pl_group"_s);
        groups->AddNew();
        groups->setValue(u"Name", name);
        groups->setValue(u"SID", kLastPosition);
        groups->setValue(u"Activ", true);
        groups->Update();
        groups->SetBookmark(groups->LastModified());
        group = GroupId(groups->value(u"GRID").toLong());
    });
    return group;
}

Pnid ListCatalogue::newList(GroupId group, const QString& name)
{
    Pnid list{};
    quiet(u"New playlist"_s, [&](Database& database) {
        const auto lists = database.OpenRecordset(u"pl_name"_s);
        lists->AddNew();
        lists->setValue(u"GRID", numberOf(group));
        lists->setValue(u"Name", name);
        lists->setValue(u"SID", kLastPosition);
        lists->setValue(u"Activ", true);
        lists->Update();
        lists->SetBookmark(lists->LastModified());
        list = Pnid(lists->value(u"NID").toLong());
        database.Execute(u"update pl_name set UpdateTime=now where nid="_s + number(list));
    });
    return list;
}

void ListCatalogue::renameGroup(GroupId group, const QString& name)
{
    quiet(u"UpdateGroupName"_s, [&](Database& database) {
        database.Execute(u"update pl_group set name="_s + sql::text(cleaned(name)) +
                         u" where grid="_s + number(group));
        // The files of its lists lie in a folder of that name.
        database.Execute(u"update pl_name set sicherung=true where grid="_s + number(group));
    });
}

void ListCatalogue::renameList(Pnid list, const QString& name)
{
    quiet(u"UpdatePlaylistName"_s, [&](Database& database) {
        database.Execute(u"update pl_name set name="_s + sql::text(cleaned(name)) +
                         u" , sicherung=true where nid="_s + number(list));
    });
}

void ListCatalogue::deleteList(Pnid list)
{
    quiet(u"DeletePlaylist"_s, [&](Database& database) {
        ListEdit edit(m_parts.history, database, ListAction::DeleteList, list);
        edit.removes(kListTable, u"nid="_s + number(list));
        edit.before(u"pnid="_s + number(list));
        database.Execute(u"delete from pl_name where nid="_s + number(list));
        database.Execute(u"delete from pl_all where pnid="_s + number(list));
        edit.commit();
    });
}

void ListCatalogue::sortLists(Pnid list, const QString& column)
{
    quiet(u"SortPlaylistTree"_s, [&](Database& database) {
        if (!hasColumn(database, column)) {
            return;
        }
        Transaction change(database);
        const auto lists = database.OpenRecordset(
            u"select * from pl_name where grid=( select grid from pl_name where nid="_s +
            number(list) + u") order by ["_s + column + u']');
        for (int position = 1; !lists->Eof(); lists->MoveNext(), ++position) {
            lists->Edit();
            lists->setValue(u"SID", position);
            lists->Update();
        }
        change.commit();
    });
}

void ListCatalogue::activate(Pnid list)
{
    quiet(u"Activate playlist"_s, [&](Database& database) {
        const auto row =
            database.OpenRecordset(u"select grid from pl_name where nid="_s + number(list));
        if (row->Eof()) {
            return;
        }
        const bool isJingle = row->value(0).toLong() == numberOf(kJingleGroup);
        Transaction change(database);
        database.Execute(u"update pl_name set isplay=false where isplay=true and grid"_s +
                         (isJingle ? u"=-1"_s : u">0"_s));
        database.Execute(u"update pl_name set isplay=true where nid="_s + number(list));
        change.commit();
    });
}

void ListCatalogue::setLock(Pnid list, bool lock)
{
    quiet(u"Lock playlist"_s, [&](Database& database) {
        database.Execute(u"update pl_name set lock=%1 where nid=%2"_s.arg(
            lock ? u"true"_s : u"false"_s, number(list)));
    });
}

ListCatalogue::State ListCatalogue::stateOf(Pnid list) const
{
    State state = State::Open;
    quiet(u"Playlist lock"_s, [&](Database& database) {
        const auto row =
            database.OpenRecordset(u"select lock from pl_name where nid="_s + number(list));
        if (row->Eof()) {
            state = State::Gone;
        } else if (row->value(0).toBool()) {
            state = State::Locked;
        }
    });
    return state;
}

bool ListCatalogue::isJingleList(Pnid list) const
{
    bool isJingle = false;
    quiet(u"Playlist group"_s, [&](Database& database) {
        const auto row =
            database.OpenRecordset(u"select grid from pl_name where nid="_s + number(list));
        isJingle = !row->Eof() && row->value(0).toInt64() == numberOf(kJingleGroup);
    });
    return isJingle;
}

void ListCatalogue::setActiv(Pnid list, bool activ)
{
    quiet(u"Show playlist"_s, [&](Database& database) {
        database.Execute(u"update pl_name set activ=%1 where nid=%2"_s.arg(
            activ ? u"true"_s : u"false"_s, number(list)));
    });
}

void ListCatalogue::arrange(const std::vector<ListPlace>& places,
                            const std::vector<GroupPlace>& groups)
{
    quiet(u"Sort playlists"_s, [&](Database& database) {
        QHash<qint64, std::pair<qint64, qint64>> former;
        const auto rows = database.OpenRecordset(u"select nid, grid, sid from pl_name"_s);
        for (; !rows->Eof(); rows->MoveNext()) {
            former.insert(rows->value(0).toLong(),
                          {rows->value(1).toLong(), rows->value(2).toLong()});
        }
        Transaction change(database);
        RowUpdate place(database, u"pl_name"_s, {u"NID"_s, FieldType::Long},
                        writtenColumns(database, u"pl_name"_s, {u"SID"_s, u"GRID"_s}));
        for (const ListPlace& wanted : places) {
            const qint64 nid = numberOf(wanted.list);
            const auto [group, position] = former.value(nid);
            if (group == numberOf(wanted.group) && position == wanted.position) {
                continue;
            }
            place.run(nid, {wanted.position, numberOf(wanted.group)});
            if (group != numberOf(wanted.group)) {
                // Its file lies in the folder of its group.
                markChanged(database, wanted.list);
            }
            if ((group == numberOf(kJingleGroup)) != (wanted.group == kJingleGroup)) {
                database.Execute(u"update pl_name set isplay=false where nid="_s +
                                 number(wanted.list));
            }
        }
        for (const GroupPlace& wanted : groups) {
            database.Execute(u"update pl_group set sid="_s + sql::number(qint64{wanted.position}) +
                             u" where grid="_s + sql::number(numberOf(wanted.group)));
        }
        change.commit();
    });
}

QString ListCatalogue::nameFromFormat(const QString& format) const
{
    QString name = format;
    quiet(u"Name of a playlist"_s,
          [&](Database& database) { name = nameOfFormat(database, format); });
    return name;
}

} // namespace melovane
