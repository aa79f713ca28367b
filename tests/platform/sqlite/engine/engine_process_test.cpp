#include "platform/sqlite/engine/engine_fixture.h"
#include "platform/sqlite/engine/mixed_changes.h"
#include "support/proof.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>

#include <array>

/// Several programs on one database. Those that a test starts are copies of this program.
namespace melovane::test {
namespace {

/// What a started copy is to do, on which file, as which of several, and how often. Told by the
/// environment, since the arguments belong to the test runner.
constexpr char kRole[] = "MLV_TEST_ROLE";
constexpr char kFile[] = "MLV_TEST_FILE";
constexpr char kWriter[] = "MLV_TEST_WRITER";
constexpr char kCount[] = "MLV_TEST_COUNT";

constexpr int kPatience = 60000; // milliseconds

const QString kSide = u"melovane.tree.mdb"_s;

/// Number of the last row that ConfirmsChanges has written, 0 for none.
int lastNumber(Database& database)
{
    const auto set = database.OpenRecordset(u"select max(id) as m from todo"_s);
    return set->Eof() ? 0 : set->value(0).toLong();
}

/// Writes row `number` and counts it, as one change, each time in another manner.
void writeNumbered(Database& database, int number)
{
    Transaction transaction(database);
    if (number % 2 == 0) {
        database.Execute(u"insert into todo (ID, FID) values (%1, 'x')"_s.arg(number));
    } else {
        const auto set = database.OpenRecordset(u"select * from todo where id=-1"_s);
        set->AddNew();
        set->setValue(u"ID", number);
        set->Update();
    }
    if (number % 5 == 0) {
        database.Execute(u"insert into TREE_DIR (Name) values ('%1')"_s.arg(number));
    }
    if (number % 7 == 0) {
        database.Execute(u"alter table genre add column c%1 long"_s.arg(number));
        database.Execute(u"alter table genre drop column c%1"_s.arg(number));
    }
    database.Execute(u"update pl_name set anzahl=anzahl+1 where nid=1"_s);
    transaction.commit();
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
            m_file = qEnvironmentVariable(kFile);
            m_count = qEnvironmentVariableIntValue(kCount);
            m_engine = sqlite::makeEngine(m_clock);
        }
    }

    void say(const QString& line)
    {
        std::printf("%s\n", line.toUtf8().constData());
        std::fflush(stdout);
    }

    FakeClock m_clock;
    bool m_asked = false;
    QString m_file;
    int m_count = 0;
    std::unique_ptr<DBEngine> m_engine;
};

TEST_F(Sibling, ChangesAndTellsItsSum)
{
    if (m_asked) {
        MixedChanges changes(*m_engine, m_file, qEnvironmentVariableIntValue(kWriter));
        const Sum sum = changes.run(m_count);
        say(u"sum "_s + sum.text());
    }
}

TEST_F(Sibling, OpensAndClosesTheFile)
{
    if (m_asked) {
        m_engine->OpenDatabase(m_file)->Execute(u"insert into genre values (1, 'sibling')"_s);
    }
}

TEST_F(Sibling, HangsInsideATransaction)
{
    if (!m_asked) {
        return;
    }
    const auto database = m_engine->OpenDatabase(m_file);
    database->Execute(u"insert into genre values (1, 'committed')"_s);
    database->BeginTrans();
    for (int i = 0; i < 5000; ++i) {
        database->Execute(u"insert into todo (ID, FID) values (%1, 'lost')"_s.arg(i));
    }
    say(u"inside"_s);
    (void)std::getchar();
}

TEST_F(Sibling, ConfirmsChanges)
{
    if (!m_asked) {
        return;
    }
    auto database = m_engine->OpenDatabase(m_file);
    for (int number = lastNumber(*database) + 1;; ++number) {
        writeNumbered(*database, number);
        say(u"done %1"_s.arg(number));
        if (number % 11 == 0) {
            m_engine->BackupDatabase(m_file, m_file + u".copy.mdb"_s);
        }
        if (number % 3 == 0) {
            database.reset();
            m_engine->Release(m_file); // closes the last connection, which empties the journal
            database = m_engine->OpenDatabase(m_file);
        }
    }
}

class EngineProcesses : public EngineTest
{
protected:
    EngineProcesses() { makeFiles(); }

    void makeFiles()
    {
        makeSuite();
        db().Execute(u"insert into pl_name (NID, anzahl, name) values (1, 0, 'shared')"_s);
        const auto side = m_engine->Workspaces(0).CreateDatabase(path(kSide), {});
        side->tableDefs().Append(
            keyedTable(u"TREE_DIR"_s, {autoNumber(u"id"_s), textField(u"Name"_s, 255)}));
        db().tableDefs().Append(link(u"TREE_DIR"_s, path(kSide)));
    }

    void start(QProcess& process, const char* role, int writer = 0, int count = 0)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QString::fromLatin1(kRole), QString::fromLatin1(role));
        environment.insert(QString::fromLatin1(kFile), path());
        environment.insert(QString::fromLatin1(kWriter), QString::number(writer));
        environment.insert(QString::fromLatin1(kCount), QString::number(count));
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationFilePath(),
                      {u"--gtest_filter=Sibling.%1"_s.arg(QString::fromLatin1(role))});
        ASSERT_TRUE(process.waitForStarted(kPatience));
    }

    /// Lets go of the file: the next one to open it is the only one.
    void letGo()
    {
        m_database.reset();
        m_engine->Release(path());
        m_engine->Release(path(kSide));
    }

    void expectIntact()
    {
        EXPECT_EQ(integrityOf(path()), u"ok"_s);
        EXPECT_EQ(integrityOf(path(kSide)), u"ok"_s);
    }

    [[nodiscard]] int number(const QString& statement)
    {
        return cellOf(*m_engine->OpenDatabase(path()), statement).toLong();
    }

    [[nodiscard]] Sum found()
    {
        Sum sum;
        sum.rows = number(u"select count(*) as n from todo"_s);
        sum.edits = number(u"select sum(id) as n from todo"_s);
        sum.counted = number(u"select anzahl from pl_name where nid=1"_s);
        sum.sideRows = number(u"select count(*) as n from TREE_DIR"_s);
        const auto database = m_engine->OpenDatabase(path());
        for (const QString& name : database->queryDefs().Names()) {
            sum.queries += name.startsWith("q_t_"_L1) ? 1 : 0;
        }
        return sum;
    }
};

TEST_F(EngineProcesses, FourThatChangeAtOnceLoseNothingAndSeeNoLock)
{
    constexpr int kWriters = 4;
    const int count = repetitions(300, 10000);
    letGo();
    QElapsedTimer timer;
    timer.start();
    std::array<QProcess, kWriters> writers;
    for (int writer = 0; writer < kWriters; ++writer) {
        start(writers[std::size_t(writer)], "ChangesAndTellsItsSum", writer, count);
    }
    Sum told;
    for (QProcess& writer : writers) {
        writer.waitForFinished(-1);
        const QString output = QString::fromUtf8(writer.readAll());
        EXPECT_EQ(writer.exitCode(), 0) << output.toStdString();
        const QStringList words = output.section(u"sum "_s, 1, 1).section(u'\n', 0, 0).split(u' ');
        ASSERT_EQ(words.size(), 10) << output.toStdString();
        told.rows += words[1].toInt();
        told.edits += words[3].toInt();
        told.counted += words[5].toInt();
        told.sideRows += words[7].toInt();
        told.queries += words[9].toInt();
    }
    EXPECT_GT(told.queries, 0);
    EXPECT_EQ(found().text(), told.text());
    letGo();
    expectIntact();
    if (isFullProof()) {
        std::printf("proof: %d processes made %d mixed changes each at once in %d s: %s, as told\n",
                    kWriters, count, int(timer.elapsed() / 1000),
                    found().text().toUtf8().constData());
    }
}

TEST_F(EngineProcesses, OneThatClosesTheFileLeavesTheJournalToThoseThatHaveItOpen)
{
    db().Execute(u"insert into genre values (1, 'first')"_s);
    // A second look at the file must not give up the locks of the first connection.
    const auto again = m_engine->OpenDatabase(path());
    QProcess sibling;
    start(sibling, "OpensAndClosesTheFile");
    ASSERT_TRUE(sibling.waitForFinished(kPatience));
    EXPECT_TRUE(QFile::exists(path() + u"-wal"_s));
    db().Execute(u"insert into genre values (1, 'second')"_s);
    EXPECT_EQ(rowsOf(*this->sibling(), u"select name from genre"_s),
              (QStringList{u"first"_s, u"sibling"_s, u"second"_s}));
}

TEST_F(EngineProcesses, OneKilledInsideATransactionLeavesWhatItHadCommitted)
{
    for (const bool alone : {false, true}) {
        SCOPED_TRACE(alone ? "alone" : "beside another");
        db().Execute(u"delete from genre"_s);
        if (alone) {
            letGo();
        }
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
        survivor->Execute(u"insert into genre values (2, 'after')"_s);
        expectIntact();
    }
}

/// A writer that says what it has done and is killed at any moment.
class EngineKills : public EngineProcesses
{
protected:
    /// \return number of the last change that the writer confirmed, 0 for none
    int confirmedBeforeKill()
    {
        constexpr int kStartTime = 60; // milliseconds: opening may be hit as well
        constexpr int kWorkTime = 25;
        QProcess writer;
        start(writer, "ConfirmsChanges");
        QByteArray output;
        if (m_random.bounded(3) > 0) {
            while (!output.contains("done")) {
                EXPECT_TRUE(writer.waitForReadyRead(kPatience));
                output += writer.readAll();
            }
            (void)writer.waitForFinished(m_random.bounded(kWorkTime));
        } else {
            (void)writer.waitForFinished(m_random.bounded(kStartTime));
        }
        writer.kill();
        EXPECT_TRUE(writer.waitForFinished(kPatience));
        EXPECT_EQ(writer.exitStatus(), QProcess::CrashExit);
        output += writer.readAll();
        // The last line may be cut off in its number.
        const QByteArray lines = output.left(output.lastIndexOf('\n'));
        const auto last = lines.lastIndexOf("done ");
        return last < 0 ? 0 : lines.mid(last + 5).toInt();
    }

    /// Rows 1 to n are there and counted, n is at least what was confirmed and at most one more.
    void expectAllConfirmed(int confirmed, int before)
    {
        const int rows = number(u"select count(*) as n from todo"_s);
        EXPECT_GE(rows, std::max(confirmed, before));
        EXPECT_LE(rows, std::max(confirmed, before) + 1);
        EXPECT_EQ(number(u"select max(id) as n from todo"_s), rows);
        EXPECT_EQ(number(u"select count(*) as n from (select distinct id from todo)"_s), rows);
        EXPECT_EQ(number(u"select anzahl from pl_name where nid=1"_s), rows);
        m_unconfirmed += rows - std::max(confirmed, before);
        // The side file is committed right behind the main file, not together with it.
        const int missing = rows / 5 - number(u"select count(*) as n from TREE_DIR"_s);
        EXPECT_GE(missing, 0);
        EXPECT_LE(missing, m_unconfirmed);
        m_now = rows;
    }

    QRandomGenerator m_random{2000};
    int m_now = 0;
    int m_unconfirmed = 0; ///< changes that came through without their word
};

TEST_F(EngineKills, LoseNothingConfirmedAndLeaveTheFilesWhole)
{
    const int kills = repetitions(20, 1000);
    int allConfirmed = 0;
    letGo();
    for (int i = 0; i < kills && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        // Every second one has the file alone: it plays the journal and removes it.
        std::unique_ptr<Database> holder;
        if (i % 2 == 0) {
            holder = m_engine->OpenDatabase(path());
        }
        const int before = m_now;
        const int confirmed = confirmedBeforeKill();
        expectAllConfirmed(confirmed, before);
        allConfirmed += std::max(0, confirmed - before);
        holder.reset();
        letGo();
        expectIntact();
        if (QFile::exists(path() + u".copy.mdb"_s)) {
            EXPECT_EQ(integrityOf(path() + u".copy.mdb"_s), u"ok"_s);
        }
    }
    EXPECT_GT(allConfirmed, kills / 2);
    if (isFullProof()) {
        std::printf("proof: %d kills: %d changes confirmed, none lost, all files whole\n", kills,
                    allConfirmed);
    }
}

} // namespace
} // namespace melovane::test
