#include "shell/console_process.h"
#include "support/wait_for.h"

#include <QFile>

#include <gtest/gtest.h>

#include <csignal>

/// A console that ends in the middle of work, and the next one.
namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class ConsolePlace : public testing::Test
{
protected:
    ConsolePlace()
    {
        QStringList tracks;
        for (int i = 0; i < 30; ++i) {
            tracks.append(suite.library.add({.Titel = u"Track %1"_s.arg(i, 2, 10, QChar(u'0')),
                                             .Interpret = u"Artist %1"_s.arg(i % 3)}));
        }
        const int group = suite.library.addGroup(u"Friday"_s);
        for (const QString& name : {u"Early"_s, u"Late"_s}) {
            suite.library.addPlaylist({.Name = name,
                                       .GRID = group,
                                       .tracks = tracks.mid(name == "Late"_L1 ? 10 : 0, 8),
                                       .IsPlay = name == "Early"_L1});
        }
        suite.engine->Release(suite.dbName());
    }

    std::unique_ptr<ConsoleProcess> start()
    {
        return std::make_unique<ConsoleProcess>(suite, u"MelovaneDB"_s,
                                                suite.folders.places().runtimeBase);
    }

    /// Works until the user stands somewhere else than at a start.
    static QJsonObject work(ConsoleProcess& console)
    {
        console.act({u"tool"_s, u"Tree1"_s, u"tree.album"_s});
        console.act({u"open"_s, u"3"_s});
        console.act({u"row"_s, u"list"_s, u"5"_s});
        console.act({u"sort"_s, u"Titel"_s});
        console.act({u"sort"_s, u"Titel"_s});
        console.act({u"search"_s, u"artist 1"_s});
        return console.act({u"row"_s, u"library"_s, u"4"_s});
    }

    [[nodiscard]] QByteArray kept() const
    {
        QFile file(suite.file(u"MelovaneDB.place"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static void expectSame(const QJsonObject& is, const QJsonObject& was)
    {
        for (const QString& what : {u"search"_s, u"tracks"_s, u"track"_s, u"open"_s, u"marked"_s,
                                    u"entry"_s, u"kind"_s}) {
            EXPECT_EQ(is[what], was[what])
                << what.toStdString() << ": " << is[what].toVariant().toString().toStdString()
                << " was " << was[what].toVariant().toString().toStdString();
        }
    }

    Suite suite;
};

TEST_F(ConsolePlace, AKillInTheMiddleOfWorkIsFollowedByAStartAtTheSamePlace)
{
    QJsonObject before;
    {
        const auto console = start();
        before = work(*console);
        ASSERT_EQ(before[u"search"_s].toString(), u"artist 1"_s);
        ASSERT_EQ(before[u"tracks"_s].toInt(), 10);
        ASSERT_EQ(before[u"open"_s].toString(), u"Late"_s);
        ASSERT_NE(before[u"entry"_s].toString(), u"Track 10"_s) << "the first one";
        ASSERT_NE(before[u"track"_s].toString(), u"Track 28"_s)
            << "the first one, falling by title";
        ASSERT_TRUE(waitFor([this] {
            return kept().contains("Library.Row=") && !kept().contains("Library.Row=0,");
        })) << kept().data();
        console->end(SIGKILL);
    }
    const auto console = start();
    const QJsonObject after = console->state();
    expectSame(after, before);
    EXPECT_TRUE(after[u"status"_s].toString().contains(u"nicht ordentlich beendet"_s));
}

TEST_F(ConsolePlace, SoIsTheEndOfTheSessionWithoutAWordOfACrash)
{
    QJsonObject before;
    {
        const auto console = start();
        before = work(*console);
        console->end(SIGTERM);
    }
    const auto console = start();
    expectSame(console->state(), before);
    EXPECT_FALSE(console->state()[u"status"_s].toString().contains(u"nicht ordentlich beendet"_s));
}

TEST_F(ConsolePlace, AConsoleThatItsUserHasClosedBeginsWithTheActiveList)
{
    {
        const auto console = start();
        work(*console);
        ASSERT_TRUE(waitFor([this] { return !kept().isEmpty(); }));
    }
    EXPECT_TRUE(kept().isEmpty());
    const auto console = start();
    EXPECT_EQ(console->state()[u"open"_s].toString(), u"Early"_s);
}

TEST_F(ConsolePlace, APlaceThatIsGoneOrBrokenKeepsNobodyFromStarting)
{
    for (const QByteArray& bytes :
         {QByteArray("[Place]\r\nTree=TreeNone\r\nList=PLF?x??999\r\nList.Entry=77\r\n"
                     "Library.Order=NoColumn,UP\r\nLibrary=node,a\r\nLibrary.Row=9999999,-3\r\n"),
          QByteArray(5000, '\xff'), QByteArray("[Place]\nLibrary=\"search\",\"''[*\"\n")}) {
        suite.write(u"MelovaneDB.place"_s, bytes);
        const auto console = start();
        EXPECT_EQ(console->state()[u"open"_s].toString(), u"Early"_s);
    }
}

} // namespace
} // namespace melovane::test
