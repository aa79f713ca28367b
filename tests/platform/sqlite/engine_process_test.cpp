#include "platform/sqlite/engine_fixture.h"

#include <QCoreApplication>
#include <QProcess>

namespace melovane::test {
namespace {

/// What a started copy of this program is to do, and on which file. Told by the environment, since
/// the arguments belong to the test runner.
constexpr char kRole[] = "MLV_TEST_ROLE";
constexpr char kFile[] = "MLV_TEST_FILE";

/// Rows that each of two writers adds, in blocks of four.
constexpr int kRowsPerWriter = 2000;
constexpr int kRowsPerBlock = 4;
constexpr int kPatience = 60000; // milliseconds

/// Adds the rows and counts them in a row that all writers share; every fifth block is statement by
/// statement, the others are transactions.
void writeRows(Database& database, const QString& writer)
{
    for (int block = 0; block < kRowsPerWriter / kRowsPerBlock; ++block) {
        std::optional<Transaction> transaction;
        if (block % 5 != 0) {
            transaction.emplace(database);
        }
        for (int i = 0; i < kRowsPerBlock; ++i) {
            database.Execute(
                u"insert into todo (ID, FID) values (%1, '%2')"_s.arg(block).arg(writer));
        }
        database.Execute(u"update pl_name set anzahl=anzahl+%1 where nid=1"_s.arg(kRowsPerBlock));
        if (transaction) {
            transaction->commit();
        }
    }
}

/// The part of a test that runs in another process. Each role is a test of its own, which does
/// nothing in the main process.
class Sibling : public testing::Test
{
protected:
    void SetUp() override
    {
        const auto* info = testing::UnitTest::GetInstance()->current_test_info();
        m_asked = qgetenv(kRole) == info->name();
        if (m_asked) {
            m_engine = sqlite::makeEngine(m_clock, {std::chrono::seconds(30)});
            m_database = m_engine->OpenDatabase(qEnvironmentVariable(kFile));
        }
    }

    void say(const char* word)
    {
        std::printf("%s\n", word);
        std::fflush(stdout);
    }

    FakeClock m_clock;
    bool m_asked = false;
    std::unique_ptr<DBEngine> m_engine;
    std::unique_ptr<Database> m_database;
};

TEST_F(Sibling, WritesRows)
{
    if (m_asked) {
        writeRows(*m_database, u"sibling"_s);
    }
}

TEST_F(Sibling, HangsInsideATransaction)
{
    if (!m_asked) {
        return;
    }
    m_database->Execute(u"insert into genre values (1, 'committed')"_s);
    m_database->BeginTrans();
    for (int i = 0; i < 5000; ++i) {
        m_database->Execute(u"insert into todo (ID, FID) values (%1, 'lost')"_s.arg(i));
    }
    say("inside");
    (void)std::getchar();
}

class EngineProcesses : public EngineTest
{
protected:
    EngineProcesses()
    {
        makeSuite();
        db().Execute(u"insert into pl_name (NID, anzahl) values (1, 0)"_s);
    }

    void start(QProcess& process, const QByteArray& role)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QString::fromLatin1(kRole), QString::fromLatin1(role));
        environment.insert(QString::fromLatin1(kFile), path());
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationFilePath(),
                      {u"--gtest_filter=Sibling.%1"_s.arg(QString::fromLatin1(role))});
        ASSERT_TRUE(process.waitForStarted(kPatience));
    }

    void expectIntact() { EXPECT_EQ(integrityOf(path()), u"ok"_s); }
};

TEST_F(EngineProcesses, TwoThatWriteAtOnceLoseNothingAndSeeNoLock)
{
    QProcess sibling;
    start(sibling, "WritesRows");
    writeRows(db(), u"own"_s);
    ASSERT_TRUE(sibling.waitForFinished(kPatience));
    EXPECT_EQ(sibling.exitCode(), 0) << sibling.readAll().toStdString();
    EXPECT_EQ(rowsOf(db(), u"select FID, count(*) as n from todo group by FID order by FID"_s),
              (QStringList{u"own|2000"_s, u"sibling|2000"_s}));
    EXPECT_EQ(cellOf(db(), u"select anzahl from pl_name"_s).toLong(), 2 * kRowsPerWriter);
    expectIntact();
}

TEST_F(EngineProcesses, OneKilledInsideATransactionLeavesWhatItHadCommitted)
{
    QProcess sibling;
    start(sibling, "HangsInsideATransaction");
    while (!sibling.readAllStandardOutput().contains("inside")) {
        ASSERT_TRUE(sibling.waitForReadyRead(kPatience));
    }
    sibling.kill();
    ASSERT_TRUE(sibling.waitForFinished(kPatience));
    const auto survivor = m_engine->OpenDatabase(path());
    EXPECT_EQ(rowsOf(*survivor, u"select Name from genre"_s), QStringList{u"committed"_s});
    EXPECT_EQ(cellOf(*survivor, u"select count(*) as n from todo"_s).toLong(), 0);
    survivor->Execute(u"insert into todo (ID) values (1)"_s);
    expectIntact();
}

TEST_F(EngineProcesses, AFileWhoseOnlyUserWasKilledOpens)
{
    db().Close();
    m_engine->Release(path());
    QProcess sibling;
    start(sibling, "HangsInsideATransaction");
    while (!sibling.readAllStandardOutput().contains("inside")) {
        ASSERT_TRUE(sibling.waitForReadyRead(kPatience));
    }
    sibling.kill();
    ASSERT_TRUE(sibling.waitForFinished(kPatience));
    const auto survivor = m_engine->OpenDatabase(path());
    EXPECT_EQ(rowsOf(*survivor, u"select Name from genre"_s), QStringList{u"committed"_s});
    EXPECT_EQ(cellOf(*survivor, u"select count(*) as n from todo"_s).toLong(), 0);
    expectIntact();
}

} // namespace
} // namespace melovane::test
