#include "monitor/monitor_fixture.h"
#include "platform/linux/mp3_player.h"
#include "store/track_reader.h"
#include "support/capture_output.h"
#include "support/sounding_mp3.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

/// The monitor over a real database, a real file and the real decoder.
class MonitorSound : public MonitorFixture
{
protected:
    MonitorSound()
    {
        m_file = suite.write(u"song.mp3"_s, soundingMp3());
        m_fid = suite.library.add({.Titel = u"Ein \"Lied\""_s,
                                   .Path = suite.dataFolder() + u'/',
                                   .DName = u"song.mp3"_s});
        suite.execute(
            u"update db_all set framestart=40, framestop=100 where fid='%1'"_s.arg(m_fid));
    }

    Monitor makeMonitor()
    {
        MonitorParts all = parts(m_player);
        all.GetAllDataByFid = [this](const QString& fid) {
            return TrackReader(*suite.engine, {}).GetAllDataByFid(suite.dbName(), fid, {});
        };
        return Monitor(std::move(all));
    }

    void expectHeardFrom(qint64 from, qint64 count)
    {
        const auto all = wholeSound(m_file);
        ASSERT_EQ(m_output.heard.size(), static_cast<size_t>(count) * 2);
        for (size_t i = 0; i < m_output.heard.size(); ++i) {
            const int sample = all[static_cast<size_t>(from) * 2 + i];
            ASSERT_EQ(m_output.heard[i], std::lround(sample * 0.75)) << i;
        }
    }

    CaptureOutput m_output;
    linux_media::Mp3Player m_player{m_output, m_loop};
    QString m_file;
    QString m_fid;
};

TEST_F(MonitorSound, ATrackOfTheLibraryIsHeardFromItsStartToItsStopFrame)
{
    playByPosition(u"on"_s);
    Monitor monitor = makeMonitor();
    monitor.MonitorPlayer(u"PLAY"_s, m_fid, 0);
    EXPECT_EQ(m_shown, QStringList(u" :: Ein \"Lied\""_s));
    m_output.pull(59 * 1152);
    m_loop.fire(100);
    EXPECT_EQ(m_status.panel(StatusPanel::Elapsed), u"00:02"_s);
    EXPECT_EQ(m_status.panel(StatusPanel::Remaining), u"−00:01"_s);
    m_output.pull(1152);
    expectHeardFrom(qint64{40} * 1152, qint64{60} * 1152);
    m_output.heard.clear();
    m_output.pull(100);
    EXPECT_EQ(m_output.heard, std::vector<qint16>(200, 0));
    m_loop.fire(100);
    EXPECT_FALSE(m_player.isPlaying());
    EXPECT_EQ(m_status.panel(StatusPanel::Elapsed), QString());
    EXPECT_EQ(m_status.panel(StatusPanel::Remaining), QString());
}

TEST_F(MonitorSound, PlayCenterOfAnOddFrameCountBeginsInTheMiddleOfAFrame)
{
    suite.write(u"song.mp3"_s, soundingMp3({44100, 2, 3.97, {u"-b"_s, u"128"_s}}));
    Monitor monitor = makeMonitor();
    monitor.MonitorPlayer(u"PLAYCENTER"_s, m_fid, 0);
    ASSERT_EQ(m_player.lengthFrames() % 2, 1) << m_player.lengthFrames();
    m_output.pull(5000);
    expectHeardFrom(qint64{m_player.lengthFrames()} * 1152 / 2, 5000);
}

TEST_F(MonitorSound, ASeekWhilePlayingIsHeardAtOnce)
{
    playByPosition(u"off"_s);
    Monitor monitor = makeMonitor();
    monitor.MonitorPlayer(u"PLAY"_s, m_fid, 0);
    monitor.MonitorPlayer(u"SEEK"_s, {}, 80);
    m_output.pull(3000);
    expectHeardFrom(qint64{80} * 1152, 3000);
    monitor.stop();
    EXPECT_FALSE(m_player.isPlaying());
}

TEST_F(MonitorSound, AMonitorThatEndsLeavesThePlayerWithoutHandlers)
{
    {
        Monitor monitor = makeMonitor();
        monitor.MonitorPlayer(u"PLAY"_s, m_fid, 0);
    }
    m_status.setPanel(StatusPanel::Elapsed, {});
    m_output.pull(1000);
    EXPECT_TRUE(m_loop.fire(100));
    EXPECT_EQ(m_status.panel(StatusPanel::Elapsed), QString());
}

} // namespace
