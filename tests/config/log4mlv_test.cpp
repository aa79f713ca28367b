#include "config/log4mlv.h"
#include "support/fake_clock.h"
#include "support/suite_folders.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class DebugLog : public testing::Test
{
protected:
    void mark(const QByteArray& lines) { suite.install(u"MelovaneDB.log4mlv"_s, lines); }

    /// Writes one line for area MLVDB.LoadConfig with a log made now.
    Log4Mlv writeOneLine(const QString& text = u"text"_s)
    {
        Log4Mlv log(suite.paths(), suite.files(), clock);
        log.SetClassName(u"MLVDB"_s);
        log.SetAreaName(u"LoadConfig"_s);
        log.DebugOut(text);
        return log;
    }

    [[nodiscard]] bool hasLog() { return suite.files().fileExists(logFile); }

    test::SuiteFolders suite{test::SuiteFolders::Layout::UserNormal};
    test::FakeClock clock;
    QString logFile = suite.configFile(u"MelovaneDB.log"_s);
};

TEST_F(DebugLog, WithoutAMarkerFileNoLogFileIsEverCreated)
{
    EXPECT_FALSE(writeOneLine().enabled());
    EXPECT_FALSE(hasLog());
}

TEST_F(DebugLog, AMarkerWithOnlyTheProgramsLineEnablesButNothingIsWritten)
{
    mark("MelovaneDB=DEBUG\n");
    EXPECT_TRUE(writeOneLine().enabled());
    EXPECT_FALSE(hasLog());
}

TEST_F(DebugLog, AnAreaWithoutTheProgramsLineWritesNothing)
{
    mark("MLVDB.LOADCONFIG=DEBUG\n");
    EXPECT_FALSE(writeOneLine().enabled());
    EXPECT_FALSE(hasLog());
}

TEST_F(DebugLog, ALineHasTimeAreaAndText)
{
    mark("MelovaneDB=DEBUG\nMLVDB.LOADCONFIG=DEBUG\n");
    clock.set(QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7)));
    EXPECT_EQ(writeOneLine(u"geöffnet"_s).logPath(), logFile);
    clock.set(QDateTime(QDate(2026, 3, 4), QTime(0, 0)));
    writeOneLine(u"two\r\nlines"_s);
    EXPECT_EQ(QString::fromUtf8(suite.folder().read(logFile)),
              u"[04.03.2026 05:06:07][MLVDB.LoadConfig]::geöffnet\n"
              "[04.03.2026 00:00:00][MLVDB.LoadConfig]::two  lines\n"_s);
}

TEST_F(DebugLog, KeyCaseInTheMarkerFileDoesNotMatter)
{
    mark("  melovanedb = debug \r\nmlvdb.loadconfig=Debug\r\n");
    writeOneLine();
    EXPECT_TRUE(hasLog());
}

TEST_F(DebugLog, ASecondLineForTheSameKeyIsIgnored)
{
    mark("MelovaneDB=DEBUG\nMLVDB.LOADCONFIG=OFF\nmlvdb.loadconfig=DEBUG\n");
    writeOneLine();
    EXPECT_FALSE(hasLog());
}

TEST_F(DebugLog, CommentsBlankLinesAndLinesWithoutEqualsAreSkipped)
{
    mark("\n  # MelovaneDB=OFF\n#MelovaneDB=OFF\nMelovaneDB\nMelovaneDB=DEBUG\n"
         "MLVDB.LOADCONFIG=DEBUG=x\n");
    EXPECT_TRUE(writeOneLine().enabled());
    EXPECT_FALSE(hasLog()) << "the level is all behind the first equals sign";
}

TEST_F(DebugLog, AMarkerThatIsAFolderOrRandomBytesLeavesTheLogOff)
{
    suite.install(u"MelovaneDB.log4mlv/x"_s, "");
    EXPECT_FALSE(writeOneLine().enabled());
    test::SuiteFolders other;
    other.install(u"MelovaneDB.log4mlv"_s, QByteArray("\xFF\0=\x80\x01\n\xFE=", 8));
    EXPECT_FALSE(Log4Mlv(other.paths(), other.files(), clock).enabled());
}

TEST_F(DebugLog, OneThatWasAskedForByTheCallIsOnForEveryAreaButThoseOfTheMarker)
{
    qputenv(kLogVariable, "1");
    EXPECT_TRUE(writeOneLine().enabled());
    EXPECT_TRUE(suite.files().read(logFile, 2 * kMaxLog).endsWith("[MLVDB.LoadConfig]::text\n"));
    mark("MLVDB.LoadConfig=off\n");
    writeOneLine(u"second"_s);
    EXPECT_FALSE(suite.files().read(logFile, 2 * kMaxLog).contains("second"));
    qunsetenv(kLogVariable);
}

TEST_F(DebugLog, ALongLogBeginsAnewAndThreeFormerOnesStay)
{
    mark("MelovaneDB=DEBUG\nMLVDB.LoadConfig=DEBUG\n");
    for (int run = 1; run <= 5; ++run) {
        suite.files().writeWhole(logFile, QByteArray::number(run) + QByteArray(int(kMaxLog), 'x'));
        writeOneLine();
    }
    EXPECT_TRUE(suite.files().read(logFile, 2 * kMaxLog).endsWith("text\n"));
    EXPECT_LT(suite.files().read(logFile, 2 * kMaxLog).size(), 100);
    for (const auto& [name, first] : {std::pair{u".1"_s, '5'}, {u".2"_s, '4'}, {u".3"_s, '3'}}) {
        EXPECT_EQ(suite.files().read(logFile + name, 2 * kMaxLog).front(), first)
            << name.toStdString();
    }
    EXPECT_FALSE(suite.files().fileExists(logFile + u".4"_s));
}

TEST_F(DebugLog, AFailingWriteIsIgnored)
{
    mark("MelovaneDB=DEBUG\nMLVDB.LOADCONFIG=DEBUG\n");
    ASSERT_TRUE(suite.files().makeFolder(logFile));
    writeOneLine();
    EXPECT_TRUE(suite.files().names(logFile).isEmpty());
}

} // namespace
} // namespace melovane
