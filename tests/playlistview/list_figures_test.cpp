#include "playlists/list_fixture.h"
#include "playlistview/list_figures.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct AnswerForm : public DetailForm
{
    QString ask(const PlaylistDetails& details) override
    {
        shown = details;
        return answer;
    }

    PlaylistDetails shown;
    QString answer;
};

struct DetailPlaylist : public testing::Test
{
    test::Lists lists;
    AnswerForm form;
    frmDetailPlaylist details{*lists.engine, *lists.settings, form};
};

TEST_F(DetailPlaylist, ATrackUsedTwiceCountsOnceAsAFileAndTwiceAsAudio)
{
    lists.addTracks(1);
    const Pnid list = lists.addList({1});
    lists.execute(u"update db_all set dlen=2096103, path='/m/', dname='a.mp3'"_s);
    lists.execute(u"update pl_all set framestart=0, framestop=3828"_s);
    const PlaylistDetails once = details.read(list);
    lists.edits.InsertORMoveFromPlaylist(cls_PLInsertMoveDel::kAppendCopies, Sid{}, list,
                                         lists.entriesText(lists.plids(list)), 0);
    const PlaylistDetails twice = details.read(list);
    EXPECT_EQ(twice.count, u"2"_s);
    EXPECT_EQ(once.mp3Space, u"1.99 MB"_s);
    EXPECT_EQ(twice.mp3Space, once.mp3Space);
    EXPECT_EQ(once.audioSpace, u"16.82 MB"_s);
    EXPECT_EQ(twice.audioSpace, u"33.64 MB"_s);
    EXPECT_EQ(twice.totalTime, u"03:19"_s);
}

TEST_F(DetailPlaylist, SizesAreCutAndNotRounded)
{
    EXPECT_EQ(megabytes(1.999 * 1024 * 1024), u"1.99 MB"_s);
    EXPECT_EQ(megabytes(0), u"0 MB"_s);
    EXPECT_EQ(megabytes(2.5 * 1024 * 1024), u"2.5 MB"_s);
}

TEST_F(DetailPlaylist, NamesAndTimesOfTheListAreShown)
{
    lists.addTracks(1);
    const Pnid list = lists.addList({1}, u"Party 'x' <b>"_s);
    lists.execute(u"update pl_name set CreateTime=#2026-05-04 20:15:00#, "
                  "UpdateTime=#2026-05-05 01:30:00#"_s);
    details.Show(list);
    EXPECT_EQ(form.shown.name, u"Party 'x' <b>"_s);
    EXPECT_EQ(form.shown.group, u"Gruppe"_s);
    EXPECT_EQ(form.shown.createTime, Value(QDateTime(QDate(2026, 5, 4), QTime(20, 15))).toText());
    EXPECT_EQ(form.shown.updateTime, Value(QDateTime(QDate(2026, 5, 5), QTime(1, 30))).toText());
    EXPECT_TRUE(form.shown.playFirst.isEmpty());
    EXPECT_TRUE(form.shown.playLast.isEmpty());
    EXPECT_TRUE(form.shown.info.isEmpty());
}

TEST_F(DetailPlaylist, TheFirstAndTheLastPlayOfItsEntriesAreShown)
{
    lists.addTracks(2);
    const Pnid list = lists.addList({1, 2});
    const Pnid other = lists.addList({1}, u"Andere"_s);
    const auto played = [&](Pnid in, int row, const QString& when) {
        lists.execute(
            u"insert into pl_stat(plid,tstamp)values(%1,#%2#)"_s.arg(lists.plids(in)[row], when));
    };
    played(list, 0, u"03/08/2024 21:00:00"_s);
    played(list, 1, u"03/08/2024 20:30:00"_s);
    played(list, 1, u"03/09/2024 00:15:00"_s);
    played(other, 0, u"01/01/2020 00:00:01"_s);
    details.Show(list);
    EXPECT_EQ(form.shown.playFirst, u"08.03.2024 20:30:00"_s);
    EXPECT_EQ(form.shown.playLast, u"09.03.2024 00:15:00"_s);
}

TEST_F(DetailPlaylist, TheNoteIsWrittenWhenItChangedAndCanBeEmptied)
{
    const Pnid list = lists.addList({});
    form.answer = u"Eine 'Notiz'\nmit \"Zeilen\""_s;
    details.Show(list);
    EXPECT_EQ(details.read(list).info, form.answer);
    form.answer = QString();
    details.Show(list);
    EXPECT_FALSE(details.read(list).info.isEmpty()) << "the dialog was left without OK";
    form.answer = u""_s;
    details.Show(list);
    EXPECT_TRUE(details.read(list).info.isEmpty());
}

TEST_F(DetailPlaylist, AListThatIsGoneShowsNothing)
{
    EXPECT_TRUE(details.read(Pnid{99}).name.isEmpty());
    details.save(Pnid{99}, u"x"_s);
}

} // namespace
} // namespace melovane
