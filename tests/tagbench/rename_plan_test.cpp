#include "platform/linux/linux_files.h"
#include "support/temp_folder.h"
#include "tagbench/rename_plan.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class Renaming : public testing::Test
{
protected:
    void add(const QString& name, const QString& title, const QString& artist = u"Wer"_s)
    {
        folder.write(name, "x");
        BenchTrack track;
        track.folder = folder.path() + u'/' + name.left(name.lastIndexOf(u'/') + 1);
        track.stored[0] = title;
        track.stored[1] = artist;
        track.stored[2] = u"Platte"_s;
        track.stored.back() = folder.path() + u'/' + name;
        track.now = track.stored;
        tracks.addTracks({track});
    }

    std::vector<RenameRow> plan(const QString& text)
    {
        std::vector<int> all;
        for (int track = 0; track < tracks.count(); ++track) {
            all.push_back(track);
        }
        return RenamePlan(files, folder.path()).rows(tracks, all, text);
    }

    test::TempFolder folder;
    LinuxFiles files;
    BenchTracks tracks;
};

TEST_F(Renaming, ANameIsMadeOfTheFields)
{
    add(u"x.mp3"_s, u"Was"_s);
    const auto rows = plan(u"%I - %N"_s);
    EXPECT_EQ(rows[0].state, RenameState::Renamed);
    EXPECT_EQ(rows[0].shown, u"Wer - Was.mp3"_s);
    EXPECT_EQ(rows[0].place, folder.path() + u"/Wer - Was.mp3"_s);
}

TEST_F(Renaming, FoldersAreMadeBelowTheFileOnce)
{
    add(u"x.mp3"_s, u"Was"_s);
    add(u"Wer/Platte/y.mp3"_s, u"Das"_s);
    const auto rows = plan(u"%I/%A/%N"_s);
    EXPECT_EQ(rows[0].place, folder.path() + u"/Wer/Platte/Was.mp3"_s);
    EXPECT_EQ(rows[1].place, folder.path() + u"/Wer/Platte/Das.mp3"_s);
}

TEST_F(Renaming, SignsOfAFieldThatNoNameMayHoldAreTold)
{
    add(u"x.mp3"_s, u"Auf/Ab\\\"?"_s);
    add(u"y.mp3"_s, u".."_s);
    const auto rows = plan(u"%N"_s);
    EXPECT_EQ(rows[0].state, RenameState::Cleaned);
    EXPECT_EQ(rows[0].shown, u"Auf_Ab___.mp3"_s);
    EXPECT_EQ(rows[1].shown, u"__.mp3"_s);
    EXPECT_TRUE(rows[1].place.startsWith(folder.path()));
}

TEST_F(Renaming, TwoFilesNeverGetOneName)
{
    add(u"1.mp3"_s, u"Was"_s);
    add(u"2.mp3"_s, u"WAS"_s);
    add(u"3.mp3"_s, u"Das"_s);
    const auto rows = plan(u"%N"_s);
    EXPECT_EQ(rows[0].state, RenameState::Twice);
    EXPECT_EQ(rows[1].state, RenameState::Twice);
    EXPECT_EQ(rows[2].state, RenameState::Renamed);
}

TEST_F(Renaming, AFileInTheWayIsNeverReplaced)
{
    folder.write(u"Was.mp3"_s, "foreign");
    add(u"1.mp3"_s, u"Was"_s);
    EXPECT_EQ(plan(u"%N"_s)[0].state, RenameState::Taken);
}

TEST_F(Renaming, ANameThatAnotherOneLeavesIsFree)
{
    add(u"a.mp3"_s, u"b"_s);
    add(u"b.mp3"_s, u"c"_s);
    auto rows = plan(u"%N"_s);
    EXPECT_EQ(rows[0].state, RenameState::Renamed);
    EXPECT_EQ(rows[1].state, RenameState::Renamed);
    // The owner stays: what he wants is taken.
    folder.write(u"c.mp3"_s, "foreign");
    rows = plan(u"%N"_s);
    EXPECT_EQ(rows[0].state, RenameState::Taken);
    EXPECT_EQ(rows[1].state, RenameState::Taken);
}

TEST_F(Renaming, NamesThatAreSwappedAreFree)
{
    add(u"a.mp3"_s, u"b"_s);
    add(u"b.mp3"_s, u"a"_s);
    EXPECT_EQ(plan(u"%N"_s)[0].state, RenameState::Renamed);
    EXPECT_EQ(plan(u"%N"_s)[1].state, RenameState::Renamed);
}

TEST_F(Renaming, ANameThatDiffersInCaseAloneIsOwn)
{
    add(u"was.mp3"_s, u"Was"_s);
    EXPECT_EQ(plan(u"%N"_s)[0].state, RenameState::Renamed);
}

TEST_F(Renaming, NothingIsRenamedToNothing)
{
    add(u"1.mp3"_s, QString());
    add(u"2.mp3"_s, u"   "_s);
    EXPECT_EQ(plan(u"%N"_s)[0].state, RenameState::NoName);
    EXPECT_EQ(plan(u"%I/%N"_s)[1].state, RenameState::NoName);
    EXPECT_EQ(plan(QString())[0].state, RenameState::NoName);
}

TEST_F(Renaming, AMissingFileAndOneThatHasItsNameStay)
{
    add(u"Was.mp3"_s, u"Was"_s);
    EXPECT_EQ(plan(u"%N"_s)[0].state, RenameState::Same);
    ASSERT_TRUE(files.remove(folder.file(u"Was.mp3"_s)));
    EXPECT_EQ(plan(u"%I"_s)[0].state, RenameState::Missing);
}

TEST_F(Renaming, LongNamesFitTheDisk)
{
    add(u"1.mp3"_s, QString(255, u'ä'));
    const auto rows = plan(u"%I/%N"_s);
    EXPECT_LE(rows[0].place.section(u'/', -1).toUtf8().size(), 255);
    EXPECT_EQ(rows[0].state, RenameState::Renamed);
}

} // namespace
} // namespace melovane
