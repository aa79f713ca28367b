#include "bus/message_numbers.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_file_lock.h"
#include "platform/linux/linux_messages.h"
#include "support/suite_fixture.h"

#include <QFile>
#include <QProcess>
#include <QTest>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The program as the console starts it: beside its settings and its database.
class RebuildTreeProcess : public SuiteFixture
{
protected:
    void SetUp() override
    {
        m_program = suite.file(u"Task.RebuildTree"_s);
        ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_REBUILDTREE), m_program));
        suite.library.add({.Interpret = u"Anna"_s, .Album = u"Eins"_s, .Genre = u"Pop"_s});
        LinuxMessages messages(MessagePlace(LinuxEnvironment().runtimeFolder()));
        m_console = messages.makeControl();
        m_console->setMessageNumber([this](qint32 id, qint32 wParam, qint32 lParam) {
            m_heard.append(u"%1 %2 %3"_s.arg(id).arg(wParam).arg(lParam));
            return 0;
        });
        suite.write(u"melovane.ini"_s,
                    "[Message]\nHandle.DB=" + QByteArray::number(m_console->handle()) + "\n");
    }

    QString run(const QStringList& arguments, int code)
    {
        QProcess process;
        process.start(m_program, arguments);
        EXPECT_TRUE(process.waitForFinished(60'000));
        EXPECT_EQ(process.exitCode(), code);
        return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
    }

    [[nodiscard]] QStringList names(const QString& table) const
    {
        return suite.column(u"select Name from %1 order by id"_s.arg(table));
    }

    QString m_program;
    std::unique_ptr<KSMessage> m_console;
    QStringList m_heard;
};

TEST_F(RebuildTreeProcess, RebuildsEverythingAndTellsTheConsole)
{
    EXPECT_EQ(run({u"1"_s}, 0), QString());
    for (const auto& [table, name] : {std::pair(u"tree_album"_s, u"Eins"_s),
                                      {u"tree_interpret"_s, u"Anna"_s},
                                      {u"tree_genre"_s, u"Pop"_s},
                                      {u"tree_genre_interpret"_s, u"Anna"_s}}) {
        EXPECT_EQ(names(table), QStringList{name});
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_heard.isEmpty(); }));
    EXPECT_EQ(m_heard, QStringList{u"1056 200 1111111"_s});
}

TEST_F(RebuildTreeProcess, IsQuietWhenNothingIsOutOfDate)
{
    EXPECT_EQ(run({}, 0), QString());
    EXPECT_EQ(run({QString()}, 0), QString());
    EXPECT_EQ(names(u"tree_album"_s), QStringList());
    suite.execute(u"insert into ChangeTree ( TreeName ) values ( 'Album' )"_s);
    EXPECT_EQ(run({}, 0), QString());
    EXPECT_EQ(names(u"tree_album"_s), QStringList{u"Eins"_s});
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_heard.isEmpty(); }));
    EXPECT_EQ(m_heard.size(), 1);
}

TEST_F(RebuildTreeProcess, RebuildsTheOneTreeThatItIsAskedFor)
{
    EXPECT_EQ(run({u"Interpret"_s}, 0), QString());
    EXPECT_EQ(names(u"tree_interpret"_s), QStringList{u"Anna"_s});
    EXPECT_EQ(names(u"tree_album"_s), QStringList());
}

TEST_F(RebuildTreeProcess, WhenTheLibraryOfTheSettingsIsAwayItSaysSoAndTouchesNoOther)
{
    suite.write(u"melovane.ini"_s, "[Global]\nDBName=/away/club.mdb\n");
    EXPECT_TRUE(run({u"1"_s}, 1).contains(u"/away/club.mdb"_s));
    EXPECT_EQ(names(u"tree_album"_s), QStringList());
}

TEST_F(RebuildTreeProcess, TwoAtOnceWorkOneBehindTheOtherAndAThirdWithTheSameWorkEnds)
{
    const FileFacts facts = suite.files.facts(suite.dbName()).value();
    const QString lock = LinuxEnvironment().runtimeFolder() +
                         u"/rebuildtree-%1-%2"_s.arg(facts.device, 0, 16).arg(facts.inode, 0, 16);
    auto running = lockFile(lock + u".lock"_s, std::chrono::milliseconds::zero());
    ASSERT_TRUE(running);
    QProcess second;
    second.start(m_program, {u"1"_s});
    ASSERT_TRUE(second.waitForStarted());
    const auto isWaiting = [&] {
        return !lockFile(lock + u"-1.lock"_s, std::chrono::milliseconds::zero());
    };
    ASSERT_TRUE(QTest::qWaitFor(isWaiting, 30'000));
    EXPECT_EQ(run({u"1"_s}, 0), QString());
    EXPECT_EQ(names(u"tree_album"_s), QStringList());
    running.reset();
    EXPECT_TRUE(second.waitForFinished(60'000));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(names(u"tree_album"_s), QStringList{u"Eins"_s});
}

} // namespace
} // namespace melovane::test
