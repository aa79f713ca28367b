#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace melovane {
class Database;
class DBEngine;
} // namespace melovane

namespace melovane::test {

/// A track to be. What a test does not name has a usable value; an empty FID gets a new one.
/// Named values stand in the order of these fields.
struct NewTrack
{
    QString FID = {};
    QString Titel = QStringLiteral("Titel");
    QString Interpret = QStringLiteral("Interpret");
    QString Album = {};
    QString Genre = {};
    QString Jahr = {};
    QString Kommentar = {};
    QString Note = {};
    QString BPM = {};
    QString Path = QStringLiteral("/music/");
    QString DName = {}; ///< empty: FID.mp3
    int DLen = 5'000'000;
    QString DTime = QStringLiteral("03:36");
    int DTimeMsec = 216'000;
    QDateTime DTSImport = QDateTime(QDate(2026, 3, 14), QTime(15, 0));
    int DriveTyp = 2;
    QString DriveName = {};
    int DEL = 0;
    QString Kategorie = {};
    QString Situation = {};
    QString Stimmung = {};
    QString Tempo = {};
    QString User1 = {};
    int PlayCountAll = 0; ///< 0: null, as for a track never played
    QDateTime Play = {};
};

struct NewPlaylist
{
    QString Name = QStringLiteral("Playlist");
    int GRID = 0; ///< 0: a new group
    QStringList tracks = {};
    bool Activ = true;
    bool IsPlay = false;
    bool Lock = false;
    bool Sicherung = false;
    int SID = 0;
};

/// Fills the library of a test in one line per track.
class LibraryMaker
{
public:
    LibraryMaker(DBEngine& engine, QString dbName);

    /// The FID of the new track.
    QString add(const NewTrack& track = {});

    /// The NID of the new playlist; its entries stand at SID 1, 2, 3 ...
    int addPlaylist(const NewPlaylist& playlist = {});

    /// The GRID of the new group.
    int addGroup(const QString& name, int sid = 0);

    /// A row of the play statistics, without touching the track.
    void addPlayback(const QString& fid, const QDateTime& moment);

private:
    DBEngine& m_engine;
    QString m_dbName;
    int m_made = 0;
};

} // namespace melovane::test
