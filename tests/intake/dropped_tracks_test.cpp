#include "intake/dropped_tracks.h"
#include "intake/intake_fixture.h"
#include "platform/db/db_error.h"

#include <QDir>
#include <QFile>

#include <limits>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

class DroppedTracksTest : public IntakeFixture
{
protected:
    DroppedTracks::Result drop(const QStringList& places)
    {
        return DroppedTracks(*suite.engine, *m_settings, suite.files, reader, suite.clock)
            .take(places);
    }

    void write(const QString& name) { music.write(name, simpleMp3(name, u"Artist"_s)); }

    std::unique_ptr<GlobalSettings> m_settings = suite.makeSettings();
};

TEST_F(DroppedTracksTest, NewFilesEnterAndKnownOnesGiveTheirRows)
{
    write(u"a.mp3"_s);
    const QStringList first = drop({music.file(u"a.mp3"_s)}).fids;
    ASSERT_EQ(first.size(), 1);
    write(u"b.mp3"_s);
    const QStringList both = drop({music.path()}).fids;
    ASSERT_EQ(both.size(), 2);
    EXPECT_EQ(both[0], first[0]);
    EXPECT_EQ(both[1], of(u"b.mp3"_s, u"FID"_s).toText());
    EXPECT_EQ(rows(), 2);
}

TEST_F(DroppedTracksTest, NewFilesNoteThatTheTreesAreOutOfDateAndKnownOnesDoNot)
{
    const auto noted = [this] {
        return suite.column(u"select TreeName from ChangeTree order by TreeName"_s);
    };
    write(u"a.mp3"_s);
    EXPECT_EQ(drop({music.file(u"a.mp3"_s)}).fids.size(), 1);
    EXPECT_EQ(noted(), (QStringList{u"Album"_s, u"Dir"_s, u"Genre"_s, u"Interpret"_s}));
    suite.execute(u"delete from ChangeTree"_s);
    EXPECT_EQ(drop({music.file(u"a.mp3"_s)}).fids.size(), 1);
    EXPECT_EQ(noted(), QStringList());
}

TEST_F(DroppedTracksTest, ThousandsOfNewFilesInOneSecondGetIdentifiersOfTheirOwn)
{
    constexpr int kFiles = 2500;
    for (int i = 0; i < kFiles; ++i) {
        write(u"%1.mp3"_s.arg(i, 5, 10, QChar(u'0')));
    }
    const DroppedTracks::Result result = drop({music.path()}); // the clock of the test stands
    EXPECT_EQ(result.fids.size(), kFiles);
    EXPECT_EQ(QSet<QString>(result.fids.begin(), result.fids.end()).size(), kFiles);
    EXPECT_EQ(rows(), kFiles);
}

TEST_F(DroppedTracksTest, ARowThatAnotherColumnRefusesEndsTheDropWithItsError)
{
    suite.execute(u"create unique index OneOfAnAlbum on db_all (Interpret)"_s);
    write(u"a.mp3"_s);
    write(u"b.mp3"_s);
    EXPECT_THROW(drop({music.path()}), DbError);
    EXPECT_EQ(rows(), 0);
}

TEST_F(DroppedTracksTest, FiveThousandFilesAreTakenAndNoMore)
{
    ASSERT_EQ(DroppedTracks::kMaxFiles, 5000);
    for (int i = 0; i <= DroppedTracks::kMaxFiles; ++i) {
        music.write(u"%1.mp3"_s.arg(i, 5, 10, QChar(u'0')), "x");
    }
    const DroppedTracks::Result result = drop({music.path()});
    EXPECT_EQ(result.skipped.refused.size(), size_t{5000});
    EXPECT_EQ(result.skipped.refused.back().path, music.file(u"04999.mp3"_s));
    EXPECT_EQ(result.beyond, 1) << "what is left out is counted";
}

TEST_F(DroppedTracksTest, AQuestionStandsBeforeEachFileAndADropThatIsEndedLeavesNothing)
{
    for (int i = 0; i < 250; ++i) {
        write(u"%1.mp3"_s.arg(i, 3, 10, QChar(u'0')));
    }
    QList<std::pair<qint64, qint64>> asked;
    qsizetype last = std::numeric_limits<qsizetype>::max();
    const auto goOn = [&](const QString&, qint64 done, qint64 size) {
        asked.append({done, size});
        return asked.size() < last;
    };
    DroppedTracks drops(*suite.engine, *m_settings, suite.files, reader, suite.clock);
    const auto isEndedBy = [&](qsizetype question) {
        asked.clear();
        last = question;
        const DroppedTracks::Result result = drops.take({music.path()}, goOn);
        return result.isGivenUp && result.fids.isEmpty() && result.entered == 0 && rows() == 0;
    };
    EXPECT_TRUE(isEndedBy(1)) << "while folders are looked through";
    EXPECT_EQ(asked.last(), std::pair(qint64{0}, qint64{0})) << "nobody knows how long";
    EXPECT_TRUE(isEndedBy(10)) << "while files are read";
    EXPECT_EQ(asked.last().second, 250);
    last = std::numeric_limits<qsizetype>::max();
    asked.clear();
    suite.execute(u"delete from db_all"_s);
    const DroppedTracks::Result whole = drops.take({music.path()}, goOn);
    EXPECT_FALSE(whole.isGivenUp);
    EXPECT_EQ(whole.entered, 250);
    EXPECT_EQ(asked.last(), std::pair(qint64{200}, qint64{250})) << "while tracks are written";
    const qsizetype questions = asked.size();
    suite.execute(u"delete from db_all"_s);
    EXPECT_TRUE(isEndedBy(questions)) << "in the midst of the writing";
}

TEST_F(DroppedTracksTest, ListsBesideFilesAreNamedByTheirKind)
{
    write(u"a.mp3"_s);
    music.write(u"a.m3u"_s, "a.mp3");
    music.write(u"b.M3U8"_s, "a.mp3");
    const DroppedTracks::Result result =
        drop({music.file(u"a.mp3"_s), music.file(u"a.m3u"_s), music.file(u"b.M3U8"_s)});
    EXPECT_EQ(result.fids.size(), 1);
    EXPECT_EQ(kindsText(result.skipped), u"2 M3U"_s);
}

TEST_F(DroppedTracksTest, WhatCannotBeReadIsTold)
{
    write(u"good.mp3"_s);
    music.write(u"bad.mp3"_s, "x");
    music.write(u"one.flac"_s, "x");
    music.write(u"cover.jpg"_s, "x");
    const DroppedTracks::Result result = drop({music.path()});
    EXPECT_EQ(result.fids.size(), 1);
    ASSERT_EQ(result.skipped.refused.size(), 1U);
    EXPECT_EQ(result.skipped.refused[0].path, music.file(u"bad.mp3"_s));
    EXPECT_EQ(skippedText(texts, result.skipped),
              u"1 Datei ohne lesbaren Ton ausgelassen: „bad.mp3“ "
              u"Nicht gelesen, weil keine MP3-Dateien: 1 FLAC."_s);
}

TEST_F(DroppedTracksTest, AFileDroppedUnderTwoNamesIsOneTrack)
{
    write(u"a.mp3"_s);
    TempFolder elsewhere;
    const QString link = elsewhere.file(u"Musik"_s);
    ASSERT_TRUE(QFile::link(music.path(), link));
    const QStringList fids = drop({music.file(u"a.mp3"_s), link + u"/a.mp3"_s}).fids;
    ASSERT_EQ(fids.size(), 2);
    EXPECT_EQ(fids[0], fids[1]);
    EXPECT_EQ(rows(), 1);
    EXPECT_EQ(drop({link}).fids, QStringList{fids[0]});
    EXPECT_EQ(rows(), 1);
}

} // namespace
