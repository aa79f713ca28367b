#include "support/library_maker.h"

#include "platform/db/database.h"

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Empty texts become null, as a real library mixes both.
Value orNull(const QString& text)
{
    return text.isEmpty() ? Value() : Value(text);
}

} // namespace

LibraryMaker::LibraryMaker(DBEngine& engine, QString dbName)
    : m_engine(engine)
    , m_dbName(std::move(dbName))
{}

QString LibraryMaker::add(const NewTrack& track)
{
    const QString fid =
        track.FID.isEmpty() ? QString::number(Q_INT64_C(826816166000) + m_made++) : track.FID;
    const auto database = m_engine.OpenDatabase(m_dbName);
    const auto set = database->OpenRecordset(u"db_all"_s);
    set->AddNew();
    set->setValue(u"FID", fid);
    set->setValue(u"Titel", orNull(track.Titel));
    set->setValue(u"Interpret", orNull(track.Interpret));
    set->setValue(u"Album", orNull(track.Album));
    set->setValue(u"Genre", orNull(track.Genre));
    set->setValue(u"Jahr", orNull(track.Jahr));
    set->setValue(u"Kommentar", orNull(track.Kommentar));
    set->setValue(u"Note", orNull(track.Note));
    set->setValue(u"BPM", orNull(track.BPM));
    set->setValue(u"Path", orNull(track.Path));
    set->setValue(u"DName", track.DName.isEmpty() ? fid + u".mp3"_s : track.DName);
    set->setValue(u"DLen", track.DLen);
    set->setValue(u"DTime", orNull(track.DTime));
    set->setValue(u"DTimeMsec", track.DTimeMsec);
    set->setValue(u"DTSImport", Value(track.DTSImport));
    set->setValue(u"DriveTyp", track.DriveTyp);
    set->setValue(u"DriveName", orNull(track.DriveName));
    set->setValue(u"DEL", track.DEL);
    set->setValue(u"Kategorie", orNull(track.Kategorie));
    set->setValue(u"Situation", orNull(track.Situation));
    set->setValue(u"Stimmung", orNull(track.Stimmung));
    set->setValue(u"Tempo", orNull(track.Tempo));
    set->setValue(u"User1", orNull(track.User1));
    if (track.PlayCountAll > 0) {
        set->setValue(u"PlayCountAll", track.PlayCountAll);
    }
    set->setValue(u"Play", Value(track.Play));
    set->Update();
    return fid;
}

int LibraryMaker::addGroup(const QString& name, int sid)
{
    const auto database = m_engine.OpenDatabase(m_dbName);
    const auto set = database->OpenRecordset(u"pl_group"_s);
    set->AddNew();
    set->setValue(u"Name", name);
    set->setValue(u"SID", sid);
    set->setValue(u"Activ", true);
    set->Update();
    set->SetBookmark(set->LastModified());
    return set->value(u"GRID").toLong();
}

int LibraryMaker::addPlaylist(const NewPlaylist& playlist)
{
    const int group = playlist.GRID == 0 ? addGroup(u"Gruppe"_s) : playlist.GRID;
    const auto database = m_engine.OpenDatabase(m_dbName);
    const auto list = database->OpenRecordset(u"pl_name"_s);
    list->AddNew();
    list->setValue(u"Name", playlist.Name);
    list->setValue(u"GRID", group);
    list->setValue(u"SID", playlist.SID);
    list->setValue(u"anzahl", int(playlist.tracks.size()));
    list->setValue(u"Activ", playlist.Activ);
    list->setValue(u"IsPlay", playlist.IsPlay);
    list->setValue(u"Lock", playlist.Lock);
    list->setValue(u"Sicherung", playlist.Sicherung);
    list->Update();
    list->SetBookmark(list->LastModified());
    const int number = list->value(u"NID").toLong();
    const auto entries = database->OpenRecordset(u"pl_all"_s);
    for (qsizetype i = 0; i < playlist.tracks.size(); ++i) {
        entries->AddNew();
        entries->setValue(u"PNID", number);
        entries->setValue(u"SID", int(i) + 1);
        entries->setValue(u"FID", playlist.tracks[i]);
        entries->Update();
    }
    return number;
}

void LibraryMaker::addPlayback(const QString& fid, const QDateTime& moment)
{
    const auto database = m_engine.OpenDatabase(m_dbName);
    const auto set = database->OpenRecordset(u"pl_stat"_s);
    set->AddNew();
    set->setValue(u"FID", fid);
    set->setValue(u"tstamp", Value(moment));
    set->setValue(u"tyear", moment.date().year());
    set->setValue(u"tmon", moment.date().month());
    set->setValue(u"tday", moment.toString(u"yyyyMMdd"_s).toInt());
    set->Update();
}

} // namespace melovane::test
