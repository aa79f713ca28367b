#include "care/ber_db_fixture.h"
#include "care/recycler.h"

#include <QProcess>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Tracks that the cleaning has removed, files and all.
class RecyclerTest : public BerDbTest
{
protected:
    class Bin : public RecyclerForm
    {
    public:
        void show(const RecyclerView& view) override { shown = view; }

        void close() override { isClosed = true; }

        RecyclerView shown;
        bool isClosed = false;
    };

    RecyclerTest()
        : recycler(recyclerParts(), bin)
    {}

    void clean()
    {
        run({0, 1, 3, 4});
        ASSERT_EQ(count(u"db_all where del=-1"_s), 0);
        changes = 0;
        treesRebuilt = 0;
    }

    [[nodiscard]] QString bat() const { return disk.file(u"MelovaneRecycler/ReMoveFiles.bat"_s); }

    Bin bin;
    Recycler recycler;
};

} // namespace

TEST_F(RecyclerTest, OneFileComesBackWithItsRowsAndTheOthersStay)
{
    const QString fid =
        addTrack({.Titel = u"Zurück"_s, .DName = u"a.mp3"_s, .DEL = -1}, u"Rock/"_s);
    const QString other = addTrack({.DName = u"b.mp3"_s, .DEL = -1}, u"Rock/"_s);
    const int list = suite.library.addPlaylist({.tracks = {fid, other}});
    suite.library.addPlayback(fid, suite.clock.now());
    clean();
    recycler.Show();
    ASSERT_EQ(bin.shown.rows.size(), 2);
    EXPECT_EQ(bin.shown.rows[0].title, u"Interpret - Zurück"_s);
    EXPECT_EQ(bin.shown.rows[0].file, music(u"Rock/a.mp3"_s));
    EXPECT_EQ(bin.shown.rows[0].moment, u"14.03.2026 15:09"_s);
    recycler.putBack({0});
    EXPECT_EQ(disk.read(music(u"Rock/a.mp3"_s)), fid.toUtf8());
    EXPECT_EQ(suite.column(u"select fid from db_all"_s), QStringList{fid});
    EXPECT_EQ(suite.column(u"select fid from pl_all where pnid=%1"_s.arg(list)), QStringList{fid});
    EXPECT_EQ(suite.value(u"select anzahl from pl_name"_s).toLong(), 1);
    EXPECT_EQ(count(u"pl_stat"_s), 1);
    ASSERT_EQ(bin.shown.rows.size(), 1);
    EXPECT_EQ(bin.shown.rows[0].file, music(u"Rock/b.mp3"_s));
    EXPECT_EQ(bin.shown.step, u"1 Titel zurückgeholt"_s);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(treesRebuilt, 1);
}

TEST_F(RecyclerTest, AListThatTheCleaningHasEmptiedComesBackWithItsGroupAndItsEntries)
{
    const QString one = addTrack({.DEL = -1});
    const QString two = addTrack({.DEL = -1});
    const int list = suite.library.addPlaylist(
        {.Name = u"Keller"_s, .tracks = {one, two}, .Activ = false, .SID = 7});
    const QString look = u"select Name & SID & '|' & anzahl & Activ from pl_name"_s;
    const QStringList before = suite.column(look);
    const QStringList groups = suite.column(u"select GRID & Name & SID from pl_group"_s);
    clean();
    ASSERT_EQ(count(u"pl_name"_s) + count(u"pl_group"_s), 0);
    recycler.Show();
    recycler.putBackAll();
    EXPECT_EQ(suite.column(look), before);
    EXPECT_EQ(suite.column(u"select GRID & Name & SID from pl_group"_s), groups);
    EXPECT_EQ(suite.column(u"select fid from pl_all where pnid=%1 order by sid"_s.arg(list)),
              (QStringList{one, two}));
}

TEST_F(RecyclerTest, AnotherListThatHasTheNumberOfAnEmptiedOneNowIsLeftAlone)
{
    const QString one = addTrack({.DEL = -1});
    const QString two = addTrack({.DEL = -1});
    const int list =
        suite.library.addPlaylist({.Name = u"Keller"_s, .tracks = {one, two}, .Activ = false});
    clean();
    suite.clock.addSeconds(3600);
    suite.execute(u"insert into pl_name (NID,GRID,Name,anzahl) values (%1,-1,'Neu',0)"_s.arg(list));
    recycler.Show();
    recycler.putBack({0});
    recycler.putBackAll();
    EXPECT_EQ(suite.column(u"select Name & anzahl from pl_name order by NID"_s),
              (QStringList{u"Neu0"_s, u"Keller2"_s}));
    EXPECT_EQ(count(u"pl_all where pnid=%1"_s.arg(list)), 0);
}

TEST_F(RecyclerTest, AllFilesComeBackAndNothingIsLeftOfThem)
{
    addTrack({.DName = u"it's\n\"a\".mp3"_s, .DEL = -1}, u"Rock/"_s);
    addTrack({.DName = u"b.mp3"_s, .DTime = u"MP3ERROR"_s}, u"Rock/"_s);
    clean();
    recycler.Show();
    recycler.putBackAll();
    EXPECT_TRUE(suite.files.fileExists(music(u"Rock/it's\n\"a\".mp3"_s)));
    EXPECT_TRUE(suite.files.fileExists(music(u"Rock/b.mp3"_s)));
    EXPECT_EQ(count(u"db_all"_s), 2);
    EXPECT_EQ(count(u"db_all where DTIME='MP3ERROR'"_s), 1);
    EXPECT_FALSE(QFile::exists(bat()));
    EXPECT_TRUE(bin.shown.rows.empty());
    recycler.Show();
    EXPECT_EQ(bin.shown.step, u"Der Papierkorb MelovaneRecycler ist leer."_s);
}

TEST_F(RecyclerTest, AFileThatTheScriptHasPutBackIsOfferedUntilItsRowIsBack)
{
    const QString fid = addTrack({.DEL = -1});
    clean();
    ASSERT_EQ(QProcess::execute(u"/bin/sh"_s, {disk.file(u"MelovaneRecycler/ReMoveFiles.sh"_s)}),
              0);
    recycler.Show();
    ASSERT_EQ(bin.shown.rows.size(), 1);
    EXPECT_EQ(bin.shown.rows[0].note, u"Datei ist da, nur der Eintrag fehlt"_s);
    recycler.putBackAll();
    EXPECT_EQ(suite.column(u"select fid from db_all"_s), QStringList{fid});
    EXPECT_TRUE(bin.shown.rows.empty());
}

TEST_F(RecyclerTest, WhatIsInTheWayIsToldAndTheRestComesBack)
{
    addTrack({.DName = u"a.mp3"_s, .DEL = -1});
    const QString other = addTrack({.DName = u"b.mp3"_s, .DEL = -1});
    clean();
    disk.write(music(u"a.mp3"_s), "newer");
    recycler.Show();
    recycler.putBackAll();
    EXPECT_EQ(disk.read(music(u"a.mp3"_s)), "newer");
    ASSERT_EQ(bin.shown.rows.size(), 1);
    EXPECT_EQ(bin.shown.rows[0].note, u"An ihrem Ort liegt eine andere Datei"_s);
    EXPECT_EQ(suite.column(u"select fid from db_all"_s), QStringList{other});
}

TEST_F(RecyclerTest, CancelledAFileStaysWithItsLineAndComesBackTheNextTime)
{
    addTrack({.DEL = -1});
    clean();
    recycler.Show();
    loop.whenTurned = [this] { recycler.cancel(); };
    recycler.putBackAll();
    EXPECT_FALSE(bin.isClosed);
    EXPECT_EQ(count(u"db_all"_s), 0);
    loop.whenTurned = {};
    recycler.Show();
    recycler.putBackAll();
    EXPECT_EQ(count(u"db_all"_s), 1);
    recycler.cancel();
    EXPECT_TRUE(bin.isClosed);
}

TEST_F(RecyclerTest, ALibraryThatFailsIsToldAndTheFilesAreOfferedAgain)
{
    addTrack({.DEL = -1});
    clean();
    recycler.Show();
    suite.engine->GiveAway(suite.dbName());
    recycler.putBackAll();
    EXPECT_EQ(bin.shown.step, u"failed"_s);
    recycler.Show();
    EXPECT_EQ(bin.shown.step, u"failed"_s);
    suite.engine->TakeBack(suite.dbName());
    recycler.Show();
    ASSERT_EQ(bin.shown.rows.size(), 1);
    recycler.putBackAll();
    EXPECT_EQ(count(u"db_all"_s), 1);
}

} // namespace melovane::test
