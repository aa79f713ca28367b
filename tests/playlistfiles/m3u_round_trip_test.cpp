#include "intake/dropped_tracks.h"
#include "platform/system/path_text.h"
#include "playlistfiles/m3u_fixture.h"

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kEntries = 500;
constexpr int kFiles = 120;

/// Signs that files of music carry in their names, and lists must not stumble over.
QString nameOf(int track)
{
    static const QStringList kParts{u"Müller – Grüße"_s, u"It's \"live\""_s, u"a|b"_s,
                                    u"100% [x]"_s,       u"日本 #1"_s,       u"plain"_s};
    return u"%1 %2.mp3"_s.arg(kParts[track % kParts.size()]).arg(track);
}

QString folderOf(int track)
{
    return track % 2 == 0 ? u"Rock & Pop"_s : u"Äther"_s;
}

/// Every second file carries its identifier in its tag, as the suite writes it.
bool hasFid(int track)
{
    return track % 2 == 0;
}

struct Styles
{
    Value MixIn, MixOut, EQ;
};

Styles stylesOf(int entry)
{
    switch (entry % 3) {
    case 0:
        return {};
    case 1:
        return {QString(), QString(), QString()};
    default:
        return {u"%1,2000,3000,0,10000"_s.arg(entry), u"0,1,2,3,4"_s, u"1,2,3"_s};
    }
}

class M3uRoundTrip : public M3uTest
{
protected:
    /// The library of the first machine: its folders are those of another system.
    Pnid firstMachine()
    {
        const auto database = lists.open();
        Transaction all(*database);
        const auto tracks = database->OpenRecordset(u"db_all"_s);
        for (int track = 0; track < kFiles; ++track) {
            tracks->AddNew();
            tracks->setValue(u"FID", Lists::fid(track));
            tracks->setValue(u"Titel", nameOf(track));
            tracks->setValue(u"Interpret", track % 5 == 0 ? Value() : Value(u"O'Neill|\"Q\""_s));
            tracks->setValue(u"DTimeMsec", 500);
            tracks->setValue(u"Path", u"C:\\Musik\\%1\\"_s.arg(folderOf(track)));
            tracks->setValue(u"DName", nameOf(track));
            tracks->Update();
        }
        all.commit();
        const auto list = Pnid(lists.library.addPlaylist({.Name = u"Größte \"Hits\" 1/2"_s}));
        fill(*database, list);
        return list;
    }

    static void fill(Database& database, Pnid list)
    {
        Transaction all(database);
        const auto rows = database.OpenRecordset(u"pl_all"_s);
        for (int entry = 0; entry < kEntries; ++entry) {
            const Styles styles = stylesOf(entry);
            rows->AddNew();
            rows->setValue(u"PNID", numberOf(list));
            rows->setValue(u"SID", 3 * entry + 7);
            rows->setValue(u"FID", Lists::fid(trackOf(entry)));
            rows->setValue(u"FrameStart", entry % 9);
            rows->setValue(u"FrameStop", 10 + entry);
            rows->setValue(u"Volume", entry % 4 - 2);
            rows->setValue(u"Pitch", -entry);
            rows->setValue(u"MixTime", 10 * entry);
            rows->setValue(u"MixIn", styles.MixIn);
            rows->setValue(u"MixOut", styles.MixOut);
            rows->setValue(u"EQ", styles.EQ);
            rows->setValue(u"Aktion", entry % 4);
            rows->Update();
        }
        all.commit();
    }

    static int trackOf(int entry) { return entry * 7 % kFiles; }

    /// The entry as the second machine has it.
    static QString expected(int entry)
    {
        const int track = trackOf(entry);
        if (!hasFid(track)) {
            // Found by its path: the values of the library there, which are those of a new track.
            return u"%1|%2|0|20|0|0|0||||0"_s.arg(entry + 2).arg(nameOf(track));
        }
        const Styles styles = stylesOf(entry);
        return u"%1|%2|%3|%4|%5|%6|%7|%8|%9|"_s.arg(entry + 2)
                   .arg(nameOf(track))
                   .arg(entry % 9)
                   .arg(10 + entry)
                   .arg(entry % 4 - 2)
                   .arg(-entry)
                   .arg(10 * entry)
                   .arg(styles.MixIn.toText(), styles.MixOut.toText()) +
               styles.EQ.toText() + u"|0"_s;
    }

    /// The second machine: an empty library beside music in another folder.
    struct Machine
    {
        Lists lists;
        std::unique_ptr<TagReader> reader = linux_media::makeTagReader();
        MlvM3U m3u{{*lists.engine,
                    *lists.settings,
                    lists.files,
                    lists.locator,
                    *reader,
                    lists.clock,
                    lists.history,
                    lists.snapshots,
                    {lists.dataFolder()}}};
    };

    void copyMusic()
    {
        for (int track = 0; track < kFiles; ++track) {
            addFile(u"Neu/%1/%2"_s.arg(folderOf(track), nameOf(track)),
                    hasFid(track) ? Lists::fid(track) : QString());
        }
    }

    static QStringList entriesOf(const Machine& machine, Pnid list)
    {
        QStringList result;
        const auto database = machine.lists.open();
        const auto set = database->OpenRecordset(
            u"select p.SID, d.DName, p.FrameStart, p.FrameStop, p.Volume, p.Pitch, p.MixTime, "
            "p.MixIn, p.MixOut, p.EQ, p.Aktion from pl_all as p inner join db_all as d on "
            "p.FID=d.FID where p.PNID=%1 order by p.SID"_s.arg(numberOf(list)));
        for (; !set->Eof(); set->MoveNext()) {
            QStringList cells;
            for (int column = 0; column < set->fieldCount(); ++column) {
                cells.append(set->value(column).toText());
            }
            result.append(cells.join(u'|'));
        }
        return result;
    }
};

TEST_F(M3uRoundTrip, AListOfFiveHundredEntriesComesBackOnAnotherMachine)
{
    QString file;
    ASSERT_TRUE(m3u.SavePlaylist(firstMachine(), file, false, music.path()));
    EXPECT_EQ(path::fileName(file), u"Größte _Hits_ 1_2.m3u"_s);
    copyMusic();

    Machine other;
    other.lists.write(u"ChangeDir.conf"_s, "C:\\Musik ?? " + music.file(u"Neu"_s).toUtf8() + "\n");
    const auto imported = DroppedTracks(*other.lists.engine, *other.lists.settings,
                                        other.lists.files, *other.reader, other.lists.clock)
                              .take({music.file(u"Neu"_s)});
    ASSERT_EQ(imported.fids.size(), kFiles);
    ASSERT_EQ(other.m3u.LoadPlaylist(file), 0);
    const Pnid list = other.m3u.importAsNewList(u"Wieder da"_s, GroupId{1});

    QStringList wanted;
    for (int entry = 0; entry < kEntries; ++entry) {
        wanted.append(expected(entry));
    }
    EXPECT_EQ(entriesOf(other, list), wanted);
    EXPECT_EQ(other.lists.value(u"select count(*) from db_all"_s).toLong(), kFiles);
}

TEST_F(M3uRoundTrip, AnEmptyLibraryIsFilledByTheListAlone)
{
    QString file;
    ASSERT_TRUE(m3u.SavePlaylist(firstMachine(), file, false, music.path()));
    copyMusic();
    Machine other;
    other.lists.write(u"ChangeDir.conf"_s, "c:/musik ?? " + music.file(u"Neu"_s).toUtf8() + "\n");
    ASSERT_EQ(other.m3u.LoadPlaylist(file), 0);
    EXPECT_EQ(other.lists.value(u"select count(*) from TEMP_PLImportM3U"_s).toLong(), kEntries);
    EXPECT_EQ(other.lists.value(u"select count(*) from db_all"_s).toLong(), kFiles);
    EXPECT_EQ(other.lists
                  .value(u"select count(*) from db_all where val(fid)<%1"_s.arg(Lists::fid(kFiles)))
                  .toLong(),
              kFiles / 2); // identifiers of the tags
}

TEST_F(M3uRoundTrip, AListBesideItsFilesIsFoundWhereverBothAreCarried)
{
    const Pnid list = firstMachine();
    for (int track = 0; track < kFiles; ++track) {
        addFile(u"Stick/"_s + nameOf(track));
    }
    QString file = music.file(u"Stick/liste"_s);
    ASSERT_TRUE(m3u.SavePlaylist(list, file, true, {}));
    Machine other;
    ASSERT_EQ(other.m3u.LoadPlaylist(file), 0);
    EXPECT_EQ(other.m3u.loaded(), kEntries);
}

} // namespace
} // namespace melovane::test
