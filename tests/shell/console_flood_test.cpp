#include "bus/message_numbers.h"
#include "platform/linux/linux_messages.h"
#include "shell/console_process.h"
#include "support/wait_for.h"

#include <QFile>
#include <QJsonArray>

#include <gtest/gtest.h>
#include <unistd.h>

/// A console under more messages than it can ever want.
namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kTracks = 40;

/// What the console may keep of a flood when it is over, in megabytes. Nothing is kept of a message
/// that was handled, so this is memory between what is in use, and less than the long proof's
/// messages would take if they stayed.
constexpr qint64 kMegabytesKept = 6;

/// A sanitizer keeps what was freed.
#ifdef __SANITIZE_ADDRESS__
constexpr bool kMemoryIsMeasured = false;
#else
constexpr bool kMemoryIsMeasured = true;
#endif

/// Programs that send at once.
constexpr int kSenders = 2;

class ConsoleFlood : public SuiteFixture
{
protected:
    ConsoleFlood()
    {
        QStringList tracks;
        for (int i = 0; i < kTracks; ++i) {
            tracks.append(suite.library.add(
                {.Titel = u"Track %1"_s.arg(i), .Interpret = u"Artist %1"_s.arg(i % 4)}));
        }
        const int group = suite.library.addGroup(u"Group"_s);
        suite.library.addPlaylist({.Name = u"First"_s, .GRID = group, .tracks = tracks.mid(0, 5)});
        suite.library.addPlaylist(
            {.Name = u"Second"_s, .GRID = group, .tracks = tracks.mid(5, 9), .IsPlay = true});
        suite.engine->Release(suite.dbName());
        const QString runtime = suite.folders.places().runtimeBase;
        folder = runtime + u"/melovane"_s;
        console = std::make_unique<ConsoleProcess>(suite, u"MelovaneDB"_s, runtime);
        messages = std::make_unique<LinuxMessages>(MessagePlace(folder));
        control = messages->makeControl();
        control->setTarget(console->handle());
    }

    /// Starts the senders, each with its share.
    std::vector<std::unique_ptr<QProcess>> send(int count)
    {
        std::vector<std::unique_ptr<QProcess>> senders;
        for (int i = 0; i < kSenders; ++i) {
            senders.push_back(std::make_unique<QProcess>());
            senders.back()->setProcessChannelMode(QProcess::ForwardedErrorChannel);
            senders.back()->start(QString::fromUtf8(MLV_MESSAGE_FLOOD),
                                  {folder, QString::number(console->process()),
                                   QString::number(count / kSenders), QString::number(++seed),
                                   suite.dbName()});
        }
        return senders;
    }

    static bool posted(const std::vector<std::unique_ptr<QProcess>>& senders)
    {
        return std::all_of(senders.begin(), senders.end(), [](const auto& sender) {
            return QTest::qWaitFor([&] { return sender->canReadLine(); }, kFloodMs);
        });
    }

    static void expectTaken(const std::vector<std::unique_ptr<QProcess>>& senders)
    {
        for (const auto& sender : senders) {
            EXPECT_TRUE(
                QTest::qWaitFor([&] { return sender->state() == QProcess::NotRunning; }, kFloodMs));
            EXPECT_EQ(sender->exitCode(), 0);
        }
    }

    void flood(int count)
    {
        expectTaken(send(count));
        settle();
    }

    /// The console is stopped while all of it is sent, and then goes on.
    void floodStopped(int count)
    {
        console->stop();
        const auto senders = send(count);
        EXPECT_TRUE(posted(senders));
        console->goOn();
        expectTaken(senders);
        settle();
    }

    /// A last message comes behind all that waits; when it has done its work, and the user has seen
    /// that of one amid the flood, the flood is over.
    void settle()
    {
        control->Post(message::kReconnectDatabase, 0, 0);
        control->PostText(message::kFieldClicked, message::kFieldIsArtist, u"Artist 3"_s);
        bool isSeen = false;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                const QJsonObject state = console->state();
                isSeen = isSeen || !state[u"asked"_s].toArray().isEmpty();
                return isSeen && state[u"tracks"_s].toInt() == kTracks / 4;
            },
            kFloodMs));
        screen = console->act({u"search"_s, u"Track 1"_s});
    }

    [[nodiscard]] qint64 megabytes() const
    {
        QFile file(u"/proc/%1/statm"_s.arg(console->process()));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().split(' ').value(1).toLongLong() * ::getpagesize() / 1024 / 1024;
    }

    /// How long a console may work off a flood.
    static constexpr int kFloodMs = 9 * 60'000;

    QString folder;
    std::unique_ptr<ConsoleProcess> console;
    std::unique_ptr<LinuxMessages> messages;
    std::unique_ptr<KSMessage> control;
    QJsonObject screen; ///< behind a flood
    int seed = 0;
};

TEST_F(ConsoleFlood, AConsoleUnderAFloodLivesKeepsNothingOfItAndShowsWhatItShowed)
{
    const bool isFull = qEnvironmentVariableIntValue("MLV_FLOOD_POSTS") > 0;
    const int posts = isFull ? qEnvironmentVariableIntValue("MLV_FLOOD_POSTS") : 4000;
    console->act({u"open"_s, u"2"_s});
    const QJsonObject before = console->act({u"search"_s, u"Track 1"_s});
    ASSERT_EQ(before[u"tracks"_s].toInt(), 11);

    flood(posts / 4);
    const qint64 warm = megabytes();
    flood(posts / 2);
    const qint64 running = megabytes();
    floodStopped(posts / 4);
    const qint64 stopped = megabytes();
    if (kMemoryIsMeasured) {
        EXPECT_LE(std::max(running, stopped) - warm, kMegabytesKept);
    }
    EXPECT_TRUE(console->isAlive());
    for (const QString& part : {u"tracks"_s, u"search"_s, u"lists"_s, u"open"_s, u"entries"_s}) {
        EXPECT_EQ(screen[part], before[part]) << part.toStdString();
    }
    std::printf("proof: %d posts, %lld MB behind the first quarter, %lld behind half of them more, "
                "%lld when it had been stopped\n",
                posts, static_cast<long long>(warm), static_cast<long long>(running),
                static_cast<long long>(stopped));
}

} // namespace
} // namespace melovane::test
