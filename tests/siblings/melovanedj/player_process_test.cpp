#include "bus/suite_messages.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_messages.h"
#include "siblings/melovanedj/night_state.h"
#include "support/sounding_mp3.h"
#include "support/suite_fixture.h"
#include "support/wait_for.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include <algorithm>
#include <csignal>
#include <cstdio>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The player as the console starts it, with real files and a sound driver that plays to nobody;
/// this test is the console.
class PlayerProcess : public SuiteFixture
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_MELOVANEDJ), program()));
        Sound sound;
        sound.seconds = 60;
        for (int number = 1; number <= kTracks; ++number) {
            NewTrack track;
            track.FID = fid(number);
            track.Path = suite.dataFolder() + u'/';
            track.DName = u"t%1.mp3"_s.arg(number);
            track.DTimeMsec = 60'000;
            suite.write(track.DName, soundingMp3(sound));
            suite.library.add(track);
        }
        suite.library.addPlaylist({.Name = u"Abend"_s,
                                   .tracks = {fid(1), fid(2), fid(3), fid(4), fid(5)},
                                   .IsPlay = true});
        m_console->setMessageNumber([this](qint32 id, qint32 wParam, qint32 lParam) {
            if (id == message::kRefreshPlaylistEntry) {
                m_playing = lParam;
                m_next = wParam;
            }
            return 0;
        });
        settings().SetMessageHandleDB(m_console->handle());
        m_player.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_player.start(program(), QStringList());
        ASSERT_TRUE(waitFor([this] { return messages().IsMsgWindow(published()); }));
    }

    void TearDown() override
    {
        m_player.terminate();
        EXPECT_TRUE(m_player.waitForFinished(kLongWaitMs));
        EXPECT_EQ(m_player.exitCode(), 0);
        EXPECT_EQ(published(), 0) << "it is gone for the suite, too";
    }

    static constexpr int kTracks = 5;

    [[nodiscard]] static QString fid(int number)
    {
        return QString::number(800'000'000'000 + number);
    }

    [[nodiscard]] QString program() const { return suite.file(u"MelovaneDJ"_s); }

    [[nodiscard]] GlobalSettings& settings() { return *m_settings; }

    [[nodiscard]] LinuxMessages& messages() { return m_messages; }

    [[nodiscard]] MessageHandle published() { return suite.makeSettings()->MessageHandleDJ(); }

    [[nodiscard]] int entryOf(int number) const
    {
        return suite.value(u"select plid from pl_all where fid='%1'"_s.arg(fid(number))).toLong();
    }

    /// The process that plays; the one that was started watches over it.
    [[nodiscard]] qint64 playingProcess() const
    {
        const qint64 watcher = m_player.processId();
        QFile children(u"/proc/%1/task/%1/children"_s.arg(watcher));
        return children.open(QIODevice::ReadOnly)
                   ? QString::fromLatin1(children.readAll()).section(u' ', 0, 0).toLongLong()
                   : 0;
    }

    std::unique_ptr<GlobalSettings> m_settings = suite.makeSettings();
    LinuxMessages m_messages{MessagePlace(LinuxEnvironment().runtimeFolder())};
    std::unique_ptr<KSMessage> m_console = m_messages.makeControl();
    SuiteMessages m_suite{*m_settings, *suite.engine, m_messages, *m_console};
    QProcess m_player;
    qint32 m_playing = -1;
    qint32 m_next = -1;
};

TEST_F(PlayerProcess, PlaysWhatTheConsoleAsksForAndTellsIt)
{
    ASSERT_TRUE(m_suite.SendToPlayer(fid(2), message::kPlayNow));
    EXPECT_TRUE(waitFor([this] { return m_playing == entryOf(2) && m_next == entryOf(3); }));
    ASSERT_TRUE(m_suite.SendToPlayer(fid(1), message::kPlayNext));
    EXPECT_TRUE(waitFor([this] { return m_playing == entryOf(2) && m_next == entryOf(1); }));
}

TEST_F(PlayerProcess, ASecondOneHandsItsOrderOverAndEnds)
{
    const MessageHandle first = published();
    m_suite.SetTodo(message::kPlayNow, fid(3));
    QProcess second;
    second.start(program(), {u"now"_s});
    ASSERT_TRUE(second.waitForFinished(kLongWaitMs));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(published(), first);
    EXPECT_TRUE(waitFor([this] { return m_playing == entryOf(3); }));
}

TEST_F(PlayerProcess, LetsGoOfTheLibraryAndPlaysOn)
{
    ASSERT_TRUE(m_suite.SendToPlayer(fid(1), message::kPlayNow));
    ASSERT_TRUE(waitFor([this] { return m_playing == entryOf(1); }));
    bool isFree = false;
    auto asker = m_messages.makeControl();
    asker->setMessageNumber([&](qint32 id, qint32, qint32 lParam) {
        isFree = id == message::kReleaseDatabase && lParam == message::kDatabaseIsFree;
        return 0;
    });
    asker->setTarget(published());
    asker->Post(message::kReleaseDatabase, 0, asker->handle());
    EXPECT_TRUE(waitFor([&] { return isFree; }));
    asker->Post(message::kReconnectDatabase, 0, 0);
    ASSERT_TRUE(m_suite.SendToPlayer(fid(2), message::kPlayNow));
    EXPECT_TRUE(waitFor([this] { return m_playing == entryOf(2); }));
}

/// Kills, in number by the environment; a proof at length asks for the time, too.
TEST_F(PlayerProcess, IsBackAndPlaysOnWhereItWasKilled)
{
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("MLV_PLAYER_KILLS", &isGiven);
    const int kills = isGiven ? given : 3;
    const NightStateFile state(nightStatePath(LinuxEnvironment().runtimeFolder()));
    ASSERT_TRUE(m_suite.SendToPlayer(fid(2), message::kPlayNow));
    ASSERT_TRUE(waitFor([&] { return m_playing == entryOf(2) && state.read()->isPlaying; }));
    for (int kill = 0; kill < kills; ++kill) {
        // Another one each time: many kills at one would look like its fault.
        const int number = kill % kTracks + 1;
        ASSERT_TRUE(m_suite.SendToPlayer(fid(number), message::kPlayNow));
        ASSERT_TRUE(waitFor([&] {
            const auto now = state.read();
            return m_playing == entryOf(number) && now && now->fid == fid(number) &&
                   now->positionMs > 200;
        })) << kill;
        const double before = state.read()->positionMs;
        const MessageHandle dead = published();
        m_playing = -1;
        QElapsedTimer passed;
        passed.start();
        ASSERT_EQ(::kill(pid_t(playingProcess()), SIGKILL), 0);
        ASSERT_TRUE(waitFor([&] {
            const auto now = state.read();
            return published() != dead && m_playing == entryOf(number) && now &&
                   now->positionMs > before;
        })) << kill;
        if (isGiven) {
            EXPECT_LT(passed.elapsed(), 3000) << kill;
        }
    }
}

/// Memory of a process in kilobytes, as far as it is in use.
int memoryOf(qint64 process)
{
    QFile status(u"/proc/%1/status"_s.arg(process));
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QString text = QString::fromLatin1(status.readAll());
    return text.section(u"VmRSS:"_s, 1).section(u"kB"_s, 0, 0).trimmed().toInt();
}

/// Some seconds among all tests, a part of a night by the environment; that one asks for the time,
/// too.
TEST_F(PlayerProcess, PlaysOnWithoutAGapAndItsMemoryStaysFlat)
{
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("MLV_PLAYER_SECONDS", &isGiven);
    const int seconds = isGiven ? given : 3;
    const NightStateFile state(nightStatePath(LinuxEnvironment().runtimeFolder()));
    ASSERT_TRUE(m_suite.SendToPlayer(fid(1), message::kPlayNow));
    ASSERT_TRUE(waitFor([&] { return m_playing == entryOf(1) && state.read()->isPlaying; }));
    const qint64 process = playingProcess();
    qint64 longestMs = 0;
    int firstMemory = 0;
    for (int second = 0; second < seconds; ++second) {
        const NightState before = *state.read();
        QElapsedTimer passed;
        passed.start();
        ASSERT_TRUE(waitFor([&] {
            const auto now = state.read();
            return now &&
                   (now->entry != before.entry || now->positionMs >= before.positionMs + 1000);
        })) << second;
        longestMs = std::max(longestMs, passed.elapsed());
        // The first minute opens what stays open.
        firstMemory = second <= seconds / 10 ? memoryOf(process) : firstMemory;
    }
    const int memory = memoryOf(process);
    EXPECT_EQ(playingProcess(), process) << "it is the one that was started";
    if (isGiven) {
        EXPECT_LT(longestMs, 1000 + 2000) << "a second of sound";
    }
    EXPECT_LT(memory, firstMemory + firstMemory / 10);
    std::printf("night: %d s played, longest second %lld ms, memory %d kB, then %d kB\n", seconds,
                static_cast<long long>(longestMs), firstMemory, memory);
}

} // namespace
} // namespace melovane::test
