#include "playlists/list_fixture.h"

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

Lists::Lists()
{
    settings->SetDbName(dbName());
    edits.SetDbName(dbName());
}

QString Lists::fid(int track)
{
    return QString::number(Q_INT64_C(800000000000) + track);
}

QStringList Lists::addTracks(int count)
{
    QStringList fids;
    const auto database = open();
    Transaction all(*database);
    const auto set = database->OpenRecordset(u"select * from db_all where fid is null"_s);
    for (int track = 1; track <= count; ++track) {
        fids.append(fid(track));
        set->AddNew();
        set->setValue(u"FID", fids.last());
        set->setValue(u"Titel", u"Titel %1"_s.arg(track));
        set->setValue(u"DTimeMsec", 60'000 * track);
        set->setValue(u"FrameStart", 10 * track);
        set->Update();
    }
    all.commit();
    return fids;
}

Pnid Lists::addList(const QList<int>& positions, const QString& name)
{
    const int group = value(u"select max(grid) from pl_group"_s).isNull()
                          ? library.addGroup(u"Gruppe"_s)
                          : value(u"select max(grid) from pl_group"_s).toLong();
    const int list = library.addPlaylist({.Name = name, .GRID = group});
    const auto database = open();
    const auto set = database->OpenRecordset(u"pl_all"_s);
    for (qsizetype i = 0; i < positions.size(); ++i) {
        set->AddNew();
        set->setValue(u"PNID", list);
        set->setValue(u"SID", positions[i]);
        set->setValue(u"FID", fid(int(i) + 1));
        set->Update();
    }
    database->Execute(
        u"update pl_name set anzahl=%1 where nid=%2"_s.arg(positions.size()).arg(list));
    return Pnid(list);
}

QString Lists::entries(Pnid list) const
{
    QStringList rows;
    const auto database = open();
    const auto set = database->OpenRecordset(
        u"select sid, fid from pl_all where pnid=%1 order by sid, plid desc"_s.arg(numberOf(list)));
    for (; !set->Eof(); set->MoveNext()) {
        rows.append(u"%1:%2"_s.arg(set->value(0).toLong())
                        .arg(set->value(1).toText().toLongLong() - Q_INT64_C(800000000000)));
    }
    return rows.join(u' ');
}

QStringList Lists::plids(Pnid list) const
{
    return column(
        u"select plid from pl_all where pnid=%1 order by sid, plid desc"_s.arg(numberOf(list)));
}

int Lists::entryCount(Pnid list) const
{
    return value(u"select anzahl from pl_name where nid=%1"_s.arg(numberOf(list))).toLong();
}

QString Lists::tracksText(const QList<int>& tracks)
{
    QStringList ids;
    for (const int track : tracks) {
        ids.append(fid(track));
    }
    return u"DRAG_TYP_FID_MP3DB:"_s + ids.join(u',');
}

QString Lists::entriesText(const QStringList& plids)
{
    return u"DRAG_TYP_PLID:"_s + plids.join(u',');
}

} // namespace melovane::test
