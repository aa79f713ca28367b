#include "platform/db/db_error.h"
#include "store/track_writing.h"
#include "support/suite_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class TrackWriting : public test::SuiteFixture
{
protected:
    [[nodiscard]] TrackChange write(const std::vector<ColumnValue>& values,
                                    TagOrder order = TagOrder::Enter)
    {
        return writeTrack(*suite.open(), fid, values, order);
    }

    [[nodiscard]] Value cell(const QString& column)
    {
        return suite.value(u"select %1 from db_all where fid='%2'"_s.arg(column, fid));
    }

    [[nodiscard]] QStringList entered() { return suite.column(u"select FID from db_edit"_s); }

    QString fid = suite.library.add({.Titel = u"Alt"_s, .Interpret = u"Wer"_s});
    QString other = suite.library.add({.Titel = u"Anderer"_s});
};

TEST_F(TrackWriting, TheColumnsGivenAreWrittenAndTheTrackIsEnteredForItsTags)
{
    const TrackChange change = write({{u"titel"_s, u"O'Neil \"[x]*\n"_s}, {u"BPM"_s, u"120"_s}});
    EXPECT_EQ(cell(u"Titel"_s).toText(), u"O'Neil \"[x]*\n"_s);
    EXPECT_EQ(cell(u"BPM"_s).toText(), u"120"_s);
    EXPECT_EQ(cell(u"Interpret"_s).toText(), u"Wer"_s);
    EXPECT_EQ(entered(), QStringList{fid});
    ASSERT_EQ(change.columns.size(), 2U);
    EXPECT_EQ(change.fid, fid);
    EXPECT_EQ(change.columns[0].before, Value(u"Alt"_s));
    EXPECT_EQ(change.columns[0].after, Value(u"O'Neil \"[x]*\n"_s));
    EXPECT_EQ(suite.column(u"select Titel from db_all where fid='%1'"_s.arg(other)),
              QStringList{u"Anderer"_s});
}

TEST_F(TrackWriting, AColumnThatHoldsItsValueAlreadyIsNoChangeButTheTrackIsEntered)
{
    const TrackChange change = write({{u"Titel"_s, u"Alt"_s}, {u"FrameStart"_s, 0}});
    EXPECT_TRUE(change.columns.empty());
    EXPECT_EQ(entered(), QStringList{fid});
}

TEST_F(TrackWriting, AChangeThatTheFileKnowsNothingOfEntersNoTrack)
{
    const TrackChange change = write({{u"favorit"_s, suite.clock.now()}}, TagOrder::None);
    EXPECT_TRUE(change.columns.at(0).before.isNull());
    EXPECT_TRUE(entered().isEmpty());
}

TEST_F(TrackWriting, ArtistAlbumAndGenreNameTheirTrees)
{
    const TrackChange change = write({{u"Titel"_s, u"Neu"_s},
                                      {u"Interpret"_s, u"Neu"_s},
                                      {u"album"_s, u"Neu"_s},
                                      {u"Genre"_s, u"Neu"_s}});
    EXPECT_EQ(change.trees(), (QStringList{u"Interpret"_s, u"Album"_s, u"Genre"_s}));
}

TEST_F(TrackWriting, WhatCannotBeWrittenLeavesTheRowAndEntersNothing)
{
    const std::vector<std::vector<ColumnValue>> hopeless = {
        {{u"Titel"_s, u"Neu"_s}, {u"Note"_s, u"zu lang"_s}},
        {{u"Titel"_s, u"Neu"_s}, {u"Nirgends"_s, u"x"_s}},
    };
    for (const auto& values : hopeless) {
        EXPECT_THROW(static_cast<void>(write(values)), DbError);
    }
    EXPECT_EQ(cell(u"Titel"_s).toText(), u"Alt"_s);
    EXPECT_TRUE(entered().isEmpty());
}

TEST_F(TrackWriting, ATrackThatIsGoneIsAnErrorAndEntersNothing)
{
    suite.execute(u"delete * from db_all where fid='%1'"_s.arg(fid));
    try {
        static_cast<void>(write({{u"Titel"_s, u"Neu"_s}}));
        FAIL() << "there is no such row";
    } catch (const DbError& error) {
        EXPECT_EQ(error.number(), dberror::kNoCurrentRecord);
    }
    EXPECT_TRUE(entered().isEmpty());
}

TEST_F(TrackWriting, RowAndOrderBelongToTheTransactionOfTheCaller)
{
    const auto database = suite.open();
    {
        Transaction given(*database);
        static_cast<void>(writeTrack(
            *database, fid, std::vector<ColumnValue>{{u"Titel"_s, u"Neu"_s}}, TagOrder::Enter));
    }
    EXPECT_EQ(cell(u"Titel"_s).toText(), u"Alt"_s);
    EXPECT_TRUE(entered().isEmpty());
}

TEST_F(TrackWriting, WithoutTheTableOfTheTagsTheRowStaysAsItWas)
{
    suite.execute(u"drop table db_edit"_s);
    EXPECT_THROW(static_cast<void>(write({{u"Titel"_s, u"Neu"_s}})), DbError);
    EXPECT_EQ(cell(u"Titel"_s).toText(), u"Alt"_s);
}

} // namespace
} // namespace melovane
