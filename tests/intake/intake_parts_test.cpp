#include "intake/intake_fids.h"
#include "intake/intake_fixture.h"
#include "intake/intake_report.h"
#include "intake/intake_session.h"
#include "intake/read_ahead.h"
#include "support/text_catalogue.h"

#include <QSet>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

TEST(IntakeFidsTest, ThousandsInOneSecondAreDifferentOnceATakenOneWasReported)
{
    const FakeClock clock;
    IntakeFids fids(clock);
    QSet<QString> made;
    for (int i = 0; i < 5500; ++i) {
        QString fid = fids.make();
        while (made.contains(fid)) {
            fids.wasTaken();
            fid = fids.make();
        }
        EXPECT_EQ(fid.size(), 12);
        made.insert(fid);
    }
    EXPECT_EQ(made.size(), 5500);
}

TEST(IntakeFidsTest, AGoodCandidateSurvivesAndABadOneDoesNot)
{
    const FakeClock clock;
    IntakeFids fids(clock);
    EXPECT_EQ(fids.make(u"654321000007"_s), u"654321000007"_s);
    for (const QString& bad : {u"000000000001"_s, u"999999999999"_s, u"65432100000x"_s,
                               u"654321000007' or '1'='1"_s, u""_s}) {
        EXPECT_NE(fids.make(bad), bad);
    }
}

struct IntakeReportTest : test::TextCatalogue, testing::Test
{
    IntakeReportTest() { fill(); }
};

TEST_F(IntakeReportTest, SaysWhatHappenedInOneSentence)
{
    IntakeReport report;
    EXPECT_EQ(summary(texts, report), u"0 Dateien geprüft."_s);
    report.found = 10;
    report.added = 5;
    report.known = 2;
    report.skipped.refused.push_back({u"/m/x.mp3"_s, 10003, {}});
    report.duplicates.push_back({u"/m/y.mp3"_s, 0, u"Kopie von /m/z.mp3"_s});
    report.cancelled = true;
    EXPECT_EQ(summary(texts, report),
              u"10 Dateien gefunden: 5 neu, 2 schon in der Datenbank, 1 doppelt, "
              u"1 abgelehnt, 1 nicht gelesen (abgebrochen)."_s);
    const QStringList lines = reportLines(texts, report);
    EXPECT_EQ(lines.at(1), u"/m/x.mp3: Fehlerhafte MP3"_s);
    EXPECT_EQ(lines.at(2), u"/m/y.mp3: Kopie von /m/z.mp3"_s);
}

TEST_F(IntakeReportTest, OneFileIsNamedInTheSingular)
{
    IntakeReport report;
    report.found = 1;
    report.added = 1;
    EXPECT_EQ(summary(texts, report), u"1 Datei geprüft: 1 neu."_s);
    EXPECT_EQ(fileCount(texts, 0), u"0 Dateien"_s);
    EXPECT_EQ(fileCount(texts, 1), u"1 Datei"_s);
    EXPECT_EQ(fileCount(texts, 21), u"21 Dateien"_s);
}

/// A reader that takes minutes for what it is given.
class SlowReader : public TagReader
{
public:
    [[nodiscard]] MediaReading read(const QString&) const override
    {
        ++reads;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        return {};
    }

    mutable std::atomic<int> reads = 0;
};

TEST(ReadAheadTest, StopsAtTheNextFileWhenItIsDestroyed)
{
    const SlowReader reader;
    {
        ReadAhead ahead(reader);
        ahead.start(std::vector<PendingFile>(100'000));
        EXPECT_FALSE(ahead.take(std::chrono::steady_clock::now()));
    }
    EXPECT_LT(reader.reads, 100'000);
}

class IntakeSessionTest : public IntakeFixture
{};

TEST_F(IntakeSessionTest, RemembersTheFolderOfTheLastImport)
{
    const auto settings = suite.makeSettings();
    {
        IntakeSession session(parts(), *settings, IntakeMode::NewFiles);
        EXPECT_TRUE(session.folders().isEmpty());
        EXPECT_FALSE(session.canStart());
        EXPECT_TRUE(session.addFolder(music.path() + u'/'));
        EXPECT_FALSE(session.addFolder(music.path())) << "already in the list";
        EXPECT_FALSE(session.addFolder(u"/no/such/folder"_s));
        session.start();
        while (session.step(std::chrono::seconds(1))) {
        }
        EXPECT_EQ(session.percent(), 100);
    }
    settings->Refresh();
    EXPECT_EQ(settings->LastImportDir(), music.path());
    IntakeSession next(parts(), *settings, IntakeMode::NewFiles);
    EXPECT_EQ(next.folders(), QStringList{music.path()});
    next.removeFolder(7);
    next.removeFolder(0);
    EXPECT_TRUE(next.folders().isEmpty());
}

TEST_F(IntakeSessionTest, TakesTheTagThatTheSettingNames)
{
    music.write(u"a.mp3"_s, demomusic::Id3v2Writer().text("TIT2", u"New"_s).tag() + shortStream() +
                                demomusic::id3v1Tag({"Old", "A", {}, {}, {}, 0, 255}));
    const auto settings = suite.makeSettings();
    settings->SetID3v2Tags(2);
    IntakeSession session(parts(), *settings, IntakeMode::NewFiles);
    session.addFolder(music.path());
    session.start();
    while (session.step(std::chrono::seconds(1))) {
    }
    EXPECT_EQ(of(u"a.mp3"_s, u"Titel"_s).toText(), u"New"_s);
}

} // namespace
