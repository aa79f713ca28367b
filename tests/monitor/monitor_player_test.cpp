#include "monitor/monitor_fixture.h"

#include <gtest/gtest.h>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

/// Writes down what it is asked; nothing sounds.
class RecordingPlayer : public Player
{
public:
    explicit RecordingPlayer(QStringList& log)
        : calls(log)
    {}

    [[nodiscard]] std::vector<SoundCard> cards() override
    {
        calls.append(u"cards"_s);
        return installed;
    }

    void open(int card) override { calls.append(u"open %1"_s.arg(card)); }

    void close() override
    {
        calls.append(u"close"_s);
        playing = false;
    }

    PlayFault load(const QString& file) override
    {
        calls.append(u"load "_s + file.section(u'/', -1));
        playing = false;
        loaded = loadFault == PlayFault::None;
        if (loaded) {
            onLoaded();
        }
        return loadFault;
    }

    [[nodiscard]] bool isLoaded() const override { return loaded; }

    void unload() override
    {
        calls.append(u"unload"_s);
        loaded = false;
        playing = false;
    }

    PlayFault play() override
    {
        calls.append(u"play"_s);
        playing = playFault == PlayFault::None;
        return playFault;
    }

    PlayFault playRange(double from, double to) override
    {
        calls.append(u"range %1 %2"_s.arg(from, 0, 'f', 3).arg(to, 0, 'f', 3));
        playing = playFault == PlayFault::None;
        return playFault;
    }

    void stop() override
    {
        calls.append(u"stop"_s);
        playing = false;
    }

    /// As at the end of what was to be played.
    void end(PlayFault fault = PlayFault::None)
    {
        playing = false;
        onPosition(position);
        onEnded(fault);
    }

    void seek(double ms) override { calls.append(u"seek %1"_s.arg(ms, 0, 'f', 3)); }

    [[nodiscard]] bool isPlaying() const override { return playing; }

    void setVolume(int value) override
    {
        calls.append(u"volume %1"_s.arg(value));
        m_volume = value;
    }

    [[nodiscard]] int volume() const override { return m_volume; }

    [[nodiscard]] double positionMs() const override { return position; }

    [[nodiscard]] double lengthMs() const override { return frames * kFrameMs; }

    [[nodiscard]] int lengthFrames() const override { return frames; }

    void setOnLoaded(std::function<void()> handler) override { onLoaded = std::move(handler); }

    void setOnPosition(std::function<void(double)> handler) override
    {
        onPosition = std::move(handler);
    }

    void setOnEnded(std::function<void(PlayFault)> handler) override
    {
        onEnded = std::move(handler);
    }

    QStringList& calls;
    std::vector<SoundCard> installed = {{u"Saal"_s, 1}, {u"Kopfhörer"_s, 2}};
    PlayFault loadFault = PlayFault::None;
    PlayFault playFault = PlayFault::None;
    bool loaded = false;
    bool playing = false;
    double position = 0;
    int frames = 193;
    std::function<void()> onLoaded;
    std::function<void(double)> onPosition;
    std::function<void(PlayFault)> onEnded;

private:
    int m_volume = 0;
};

class MonitorPlayerTest : public MonitorFixture
{
protected:
    /// What happened since the last call.
    QStringList calls() { return std::exchange(m_calls, {}); }

    /// The same without the cards, for tests of what comes after they were listed.
    QStringList callsAfterCards()
    {
        QStringList rest = calls();
        rest.removeAll(u"cards"_s);
        return rest;
    }

    RecordingPlayer m_player{m_calls};
    Monitor m_monitor{parts(m_player)};
};

TEST_F(MonitorPlayerTest, PlayLoadsSetsTheVolumeAndStartsAtTheStartPosition)
{
    playByPosition(u"off"_s);
    addTrack(u"a"_s, 40, 100);
    m_monitor.MonitorPlayer(u"play"_s, u"a"_s, 0);
    EXPECT_EQ(calls(),
              (QStringList{u"others"_s, u"read a"_s, u"load a.mp3"_s, u"volume 7500"_s, u"cards"_s,
                           u"open 0"_s, u"stop"_s, u"seek 1044.898"_s, u"play"_s}));
    EXPECT_EQ(m_shown, QStringList(u" :: Titel a"_s));
}

TEST_F(MonitorPlayerTest, WithPlayByPositionOnItPlaysFromStartToStop)
{
    playByPosition(u"on"_s);
    addTrack(u"a"_s, 40, 100);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_EQ(m_calls.last(), u"range 1044.898 2612.245"_s);
}

TEST_F(MonitorPlayerTest, AStopPositionNotBehindTheStartPlaysToTheEnd)
{
    playByPosition(u"on"_s);
    addTrack(u"same"_s, 100, 100);
    addTrack(u"none"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"same"_s, 0);
    EXPECT_EQ(m_calls.mid(m_calls.size() - 2), (QStringList{u"seek 2612.245"_s, u"play"_s}));
    m_monitor.MonitorPlayer(u"PLAY"_s, u"none"_s, 0);
    EXPECT_EQ(m_calls.mid(m_calls.size() - 2), (QStringList{u"seek 0.000"_s, u"play"_s}));
}

TEST_F(MonitorPlayerTest, PlayCenterOfAnOddFrameCountSeeksTheHalfFrameToo)
{
    addTrack(u"a"_s, 40, 100);
    m_monitor.MonitorPlayer(u"PlayCenter"_s, u"a"_s, 0);
    // 96.5 frames; cut to 96 it would be 2507.755.
    EXPECT_EQ(m_calls.mid(m_calls.size() - 2), (QStringList{u"seek 2520.816"_s, u"play"_s}));
    EXPECT_EQ(m_calls.first(), u"others"_s);
}

TEST_F(MonitorPlayerTest, PlayCenterOvertakenWhileTheLoopTurnsDoesNotStart)
{
    addTrack(u"a"_s);
    m_loop.onTurn = [this] {
        m_loop.onTurn = {};
        m_monitor.MonitorPlayer(u"STOP"_s, {}, 0);
    };
    m_monitor.MonitorPlayer(u"PLAYCENTER"_s, u"a"_s, 0);
    EXPECT_EQ(m_calls.last(), u"stop"_s);
    EXPECT_FALSE(m_calls.contains(u"play"_s));
}

TEST_F(MonitorPlayerTest, ALoadedTrackIsNotLoadedAgain)
{
    playByPosition(u"off"_s);
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    calls();
    m_monitor.MonitorPlayer(u"PLAYCENTER"_s, u"a"_s, 0);
    EXPECT_EQ(calls(), (QStringList{u"others"_s, u"stop"_s, u"seek 2520.816"_s, u"play"_s}));
    m_monitor.MonitorPlayer(u"PLAY"_s, {}, 0);
    EXPECT_EQ(calls(),
              (QStringList{u"others"_s, u"read a"_s, u"stop"_s, u"seek 0.000"_s, u"play"_s}));
    EXPECT_EQ(m_shown.size(), 1);
}

TEST_F(MonitorPlayerTest, StartAndStopSetAnewAreUsedByTheNextPlay)
{
    playByPosition(u"on"_s);
    addTrack(u"a"_s, 0, 10);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    m_tracks[u"a"_s].FrameStart = 40;
    m_tracks[u"a"_s].FrameStop = 100;
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_EQ(m_calls.last(), u"range 1044.898 2612.245"_s);
    // A read that fails keeps what was known.
    m_tracks.clear();
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_EQ(m_calls.last(), u"range 1044.898 2612.245"_s);
}

TEST_F(MonitorPlayerTest, SeekGoesToAFrameAndLeavesTheOthersAlone)
{
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    calls();
    m_monitor.MonitorPlayer(u"seek"_s, {}, 100);
    EXPECT_EQ(calls(), QStringList(u"seek 2612.245"_s));
}

TEST_F(MonitorPlayerTest, SeekOfATrackNotLoadedLoadsItAndStaysSilent)
{
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"SEEK"_s, u"a"_s, 10);
    EXPECT_EQ(calls(),
              (QStringList{u"read a"_s, u"load a.mp3"_s, u"volume 7500"_s, u"seek 261.225"_s}));
}

TEST_F(MonitorPlayerTest, StopStopsAndDisturbsNobody)
{
    m_monitor.MonitorPlayer(u"Stop"_s, u"a"_s, 0);
    EXPECT_EQ(calls(), QStringList(u"stop"_s));
}

TEST_F(MonitorPlayerTest, UnknownActionsAndNoTrackAtAllDoNothing)
{
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"REWIND"_s, u"a"_s, 0);
    m_monitor.MonitorPlayer({}, u"a"_s, 0);
    m_monitor.MonitorPlayer(u"PLAY"_s, {}, 0);
    EXPECT_EQ(calls(), QStringList());
}

TEST_F(MonitorPlayerTest, AMissingFileIsToldInTheStatusLineAndWhatPlayedStops)
{
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    addTrack(u"b"_s);
    ASSERT_TRUE(suite.files.remove(suite.file(u"b.mp3"_s)));
    m_monitor.MonitorPlayer(u"PLAY"_s, u"b"_s, 0);
    EXPECT_EQ(m_calls.last(), u"unload"_s);
    EXPECT_EQ(m_shown.last(), u"Datei nicht gefunden :: b.mp3"_s);
    EXPECT_TRUE(m_warnings.texts.isEmpty());
    suite.write(u"b.mp3"_s, "x");
    m_monitor.MonitorPlayer(u"PLAY"_s, {}, 0);
    EXPECT_EQ(m_shown.last(), u" :: Titel b"_s);
}

TEST_F(MonitorPlayerTest, AMissingFileOfADiscAsksForTheDisc)
{
    addTrack(u"a"_s);
    m_tracks[u"a"_s].DName = u"fort.mp3"_s;
    m_tracks[u"a"_s].DriveTyp = 4;
    m_tracks[u"a"_s].DriveName = u"HITS 3"_s;
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_EQ(m_warnings.texts, QStringList(u"Die Datei: \n\nfort.mp3\n\nbefindet sich auf der CD: "
                                            "\n\nHITS 3\n\n\nBitte CD einlegen."_s));
    EXPECT_EQ(m_warnings.titles, QStringList(u"Titel auf CD - DVD"_s));
    EXPECT_EQ(m_warnings.types, std::vector{WarningType::Note});
    EXPECT_TRUE(m_shown.isEmpty());
}

TEST_F(MonitorPlayerTest, AFileOfADiscThatIsInsertedPlays)
{
    addTrack(u"a"_s);
    m_tracks[u"a"_s].DriveTyp = 4;
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_TRUE(m_warnings.texts.isEmpty());
    EXPECT_EQ(m_shown, QStringList(u" :: Titel a"_s));
}

TEST_F(MonitorPlayerTest, AnUnknownTrackIsAMissingFile)
{
    m_monitor.MonitorPlayer(u"PLAY"_s, u"nobody"_s, 0);
    EXPECT_EQ(m_shown, QStringList(u"Datei nicht gefunden :: "_s));
}

TEST_F(MonitorPlayerTest, ForeignFoldersAreMappedAsInTheRestOfTheProgram)
{
    addTrack(u"a"_s);
    suite.write(u"musik/Rock/song.mp3"_s, "x");
    m_tracks[u"a"_s].Path = u"D:\\Music\\Rock\\"_s;
    m_tracks[u"a"_s].DName = u"song.mp3"_s;
    suite.write(u"ChangeDir.conf"_s,
                u"D:\\Music\\ ?? %1\r\n"_s.arg(suite.file(u"musik"_s)).toUtf8());
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_TRUE(m_calls.contains(u"load song.mp3"_s)) << m_calls.join(u',').toStdString();
}

TEST_F(MonitorPlayerTest, FilesThatHoldNoSoundOrVanishAreToldByName)
{
    addTrack(u"a"_s);
    m_player.loadFault = PlayFault::NoAudio;
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_EQ(m_shown, QStringList(u"Keine gültige MP3 Datei :: a.mp3"_s));
    m_player.loadFault = PlayFault::Missing;
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_EQ(m_shown.last(), u"Datei nicht gefunden :: a.mp3"_s);
    m_player.loadFault = PlayFault::None;
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    m_player.onEnded(PlayFault::Broken);
    EXPECT_EQ(m_shown.last(), u"Datei nicht lesbar :: a.mp3"_s);
}

TEST_F(MonitorPlayerTest, TheVolumeOfTheSettingsIsTakenAtEachLoad)
{
    addTrack(u"a"_s);
    addTrack(u"b"_s);
    m_settings->WriteKeyValue(u"Global"_s, u"Volume.Monitor"_s, u"1234"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_EQ(m_player.volume(), 1234);
    m_monitor.setVolume(9000);
    EXPECT_EQ(m_player.volume(), 9000);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"b"_s, 0);
    EXPECT_EQ(m_player.volume(), 1234);
}

TEST_F(MonitorPlayerTest, AChosenVolumeIsHeardAtOnceAndKeptForTheNextTrackAndTheNextStart)
{
    const auto kept = [this] {
        return suite.makeSettings()->GetKeyValueLong(u"Global"_s, u"Volume.Monitor"_s, 7500);
    };
    addTrack(u"a"_s);
    addTrack(u"b"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    m_monitor.chooseVolume(4000);
    EXPECT_EQ(m_player.volume(), 4000);
    EXPECT_EQ(m_panel.volume, 4000);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"b"_s, 0);
    EXPECT_EQ(m_player.volume(), 4000);
    // A drag is one change of the settings, not a hundred.
    EXPECT_EQ(kept(), 7500);
    EXPECT_TRUE(m_loop.fire(500));
    EXPECT_EQ(kept(), 4000);
    EXPECT_FALSE(m_loop.fire(500));
    EXPECT_EQ(m_volumes, QList<int>{4000});
}

TEST_F(MonitorPlayerTest, TheVolumeGoesByTwentiethsAndStaysInItsRange)
{
    m_monitor.changeVolume(1);
    EXPECT_EQ(m_volumes.last(), 8000);
    m_monitor.changeVolume(-2);
    EXPECT_EQ(m_volumes.last(), 7000);
    m_monitor.changeVolume(100'000'000);
    EXPECT_EQ(m_volumes.last(), 10'000);
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_EQ(m_player.volume(), 10'000);
    // The volume monitor's is what is heard, and what the next step starts from.
    m_monitor.setVolume(2000);
    EXPECT_EQ(m_panel.volume, 2000);
    m_monitor.changeVolume(1);
    EXPECT_EQ(m_player.volume(), 2500);
    m_monitor.changeVolume(-100);
    EXPECT_EQ(m_player.volume(), 0);
}

TEST_F(MonitorPlayerTest, AVolumeThatWasJustChosenIsKeptByTheEnd)
{
    {
        Monitor other(parts(m_player));
        other.chooseVolume(300);
    }
    EXPECT_EQ(suite.makeSettings()->GetKeyValueLong(u"Global"_s, u"Volume.Monitor"_s, 7500), 300);
}

TEST_F(MonitorPlayerTest, TheVolumeOfTheSettingsIsShownFromTheStartOn)
{
    m_settings->WriteKeyValue(u"Global"_s, u"Volume.Monitor"_s, u"1234"_s);
    m_monitor.reopen();
    EXPECT_EQ(m_panel.volume, 1234);
}

TEST_F(MonitorPlayerTest, ThePositionStandsInTheStatusPanels)
{
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    m_player.frames = 9200; // 240326.54 ms
    m_player.onPosition(61500);
    EXPECT_EQ(m_status.panel(StatusPanel::Elapsed), u"01:01"_s);
    EXPECT_EQ(m_status.panel(StatusPanel::Remaining), u"−02:58"_s);
}

TEST_F(MonitorPlayerTest, TheTimesGoWhenNothingPlaysAnyLonger)
{
    const auto times = [this] {
        return m_status.panel(StatusPanel::Elapsed) + m_status.panel(StatusPanel::Remaining);
    };
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_EQ(times(), u"00:00−00:05"_s);
    m_monitor.stop();
    EXPECT_EQ(times(), QString());
    // What the player still tells of where it stands is no time of anything.
    m_player.onPosition(1000);
    EXPECT_EQ(times(), QString());
    m_monitor.MonitorPlayer(u"PLAY"_s, {}, 0);
    EXPECT_NE(times(), QString());
    m_player.end();
    EXPECT_EQ(times(), QString());
    m_monitor.MonitorPlayer(u"PLAY"_s, {}, 0);
    m_monitor.reopen();
    EXPECT_EQ(times(), QString());
    m_monitor.MonitorPlayer(u"PLAY"_s, {}, 0);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"nobody"_s, 0);
    EXPECT_EQ(times(), QString());
}

TEST_F(MonitorPlayerTest, WhatIsHeardIsToldWithItsTitleUntilItEnds)
{
    std::vector<HeardTrack> told;
    m_monitor.setOnHeard([&](const HeardTrack& track) { told.push_back(track); });
    addTrack(u"a"_s);
    addTrack(u"b"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_EQ(told.back(), (HeardTrack{u"a"_s, u"Titel a"_s}));
    m_monitor.MonitorPlayer(u"PLAYCENTER"_s, u"b"_s, 0);
    EXPECT_EQ(told.back(), (HeardTrack{u"b"_s, u"Titel b"_s}));
    const size_t before = told.size();
    m_player.onPosition(500);
    EXPECT_EQ(told.size(), before);
    m_player.end();
    EXPECT_EQ(told.back(), HeardTrack());
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    m_monitor.stop();
    EXPECT_EQ(told.back(), HeardTrack());
}

TEST_F(MonitorPlayerTest, ThePlaceIsShownAsLongAsItPlays)
{
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    m_player.frames = 9200; // 240326.54 ms
    m_player.onPosition(61500);
    ASSERT_TRUE(m_panel.place);
    EXPECT_EQ(m_panel.place->first, 61500);
    EXPECT_NEAR(m_panel.place->second, 240326.54, 0.01);
    m_monitor.stop();
    EXPECT_FALSE(m_panel.place);
}

TEST_F(MonitorPlayerTest, APlaceThatIsLookedForStandsInTheTimesUntilItIsTakenOrGivenUp)
{
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    m_player.frames = 9200;
    m_monitor.offerPlace(125000);
    m_player.onPosition(61500);
    EXPECT_EQ(m_status.panel(StatusPanel::Elapsed), u"02:05"_s);
    EXPECT_EQ(m_status.panel(StatusPanel::Remaining), u"−01:55"_s);
    m_monitor.offerPlace(-1);
    m_player.onPosition(61500);
    EXPECT_EQ(m_status.panel(StatusPanel::Elapsed), u"01:01"_s);
    m_monitor.offerPlace(125000);
    calls();
    m_monitor.seekTo(125000);
    EXPECT_EQ(calls(), QStringList(u"seek 125000.000"_s));
    m_player.onPosition(125100);
    EXPECT_EQ(m_status.panel(StatusPanel::Elapsed), u"02:05"_s);
    m_player.position = 20000;
    m_monitor.seekBy(-5000);
    EXPECT_EQ(calls(), QStringList(u"seek 15000.000"_s));
}

TEST_F(MonitorPlayerTest, ASilentMonitorHasNoPlaceToGoTo)
{
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    m_monitor.stop();
    calls();
    m_monitor.seekTo(1000);
    m_monitor.offerPlace(1000);
    EXPECT_EQ(calls(), QStringList());
    EXPECT_EQ(m_status.panel(StatusPanel::Elapsed), QString());
}

TEST_F(MonitorPlayerTest, AnotherProgramThatHangsIsToldAndTheTrackPlaysAllTheSame)
{
    addTrack(u"a"_s);
    m_othersAnswer = false;
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_TRUE(m_player.playing);
    EXPECT_TRUE(m_shown.last().contains(u"antwortet nicht"_s)) << m_shown.last().toStdString();
    m_shown.clear();
    m_monitor.MonitorPlayer(u"SEEK"_s, {}, 10);
    EXPECT_TRUE(m_shown.isEmpty());
}

TEST_F(MonitorPlayerTest, ARequestThatPlaysNothingSaysSo)
{
    std::vector<HeardTrack> told;
    m_monitor.setOnHeard([&](const HeardTrack& track) { told.push_back(track); });
    m_monitor.MonitorPlayer(u"PLAY"_s, u"nobody"_s, 0);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0], HeardTrack());
    addTrack(u"a"_s);
    m_player.playFault = PlayFault::NoCard;
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_EQ(told.back(), HeardTrack());
}

TEST_F(MonitorPlayerTest, TheCardOfTheSettingsIsTakenByItsName)
{
    m_settings->SetSCardNameMonitor(u"Kopfhörer"_s);
    m_settings->SetSCardNamePlayer1(u"Saal"_s);
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_TRUE(m_calls.contains(u"open 2"_s));
    EXPECT_EQ(m_settings->SCardNameMonitorID(), 2);
    EXPECT_EQ(m_settings->SCardNamePlayer1ID(), 1);
    calls();
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_FALSE(calls().contains(u"cards"_s));
}

TEST_F(MonitorPlayerTest, AChosenCardThatIsAbsentIsNeverReplacedByAnother)
{
    m_settings->SetSCardNameMonitor(u"Kopfhörer"_s);
    m_player.installed = {{u"Saal"_s, 1}};
    addTrack(u"a"_s);
    for (const auto& action : {u"PLAY"_s, u"PLAYCENTER"_s}) {
        m_monitor.MonitorPlayer(action, u"a"_s, 0);
        EXPECT_EQ(m_shown.last(), u"Soundkarte zum Vorhören nicht gefunden :: Kopfhörer"_s);
    }
    EXPECT_FALSE(m_calls.contains(u"play"_s));
    m_player.installed.push_back({u"Kopfhörer"_s, 2});
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_TRUE(m_calls.contains(u"open 2"_s));
    EXPECT_TRUE(m_calls.last() == u"play"_s || m_calls.last().startsWith(u"range"_s));
}

TEST_F(MonitorPlayerTest, WithoutAnyCardItSaysSoAndLooksAgainNextTime)
{
    addTrack(u"a"_s);
    m_player.playFault = PlayFault::NoCard;
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_EQ(m_shown.last(), u"Keine Soundkarte zum Vorhören"_s);
    calls();
    m_player.playFault = PlayFault::None;
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_TRUE(calls().contains(u"cards"_s));
}

TEST_F(MonitorPlayerTest, ACardPulledOutWhilePlayingIsToldAndLookedForAgain)
{
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    m_player.onEnded(PlayFault::None);
    EXPECT_EQ(m_shown, QStringList(u" :: Titel a"_s));
    m_player.onEnded(PlayFault::NoCard);
    EXPECT_EQ(m_shown.last(), u"Keine Soundkarte zum Vorhören"_s);
    calls();
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_TRUE(calls().contains(u"cards"_s));
}

TEST_F(MonitorPlayerTest, ReopenClosesAtOnceAndListsTheCardsLater)
{
    m_settings->SetSCardNameMonitor(u"Kopfhörer"_s);
    m_monitor.reopen();
    EXPECT_EQ(calls(), QStringList(u"close"_s));
    EXPECT_TRUE(m_loop.fire(1000));
    EXPECT_EQ(calls(), QStringList(u"cards"_s));
    EXPECT_EQ(m_settings->SCardNameMonitorID(), 2);
    EXPECT_FALSE(m_loop.fire(1000));
    addTrack(u"a"_s);
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_TRUE(m_calls.contains(u"open 2"_s));
    m_settings->SetSCardNameMonitor(u"Saal"_s);
    m_monitor.reopen();
    m_monitor.MonitorPlayer(u"PLAY"_s, u"a"_s, 0);
    EXPECT_TRUE(m_calls.contains(u"open 1"_s));
}

TEST_F(MonitorPlayerTest, EveryButtonRunsAndHasAToolTip)
{
    playByPosition(u"off"_s);
    addTrack(u"a"_s);
    const QHash<QString, QString> lastCall = {{u"play.stop"_s, u"stop"_s},
                                              {u"play.start"_s, u"play"_s},
                                              {u"play.center"_s, u"play"_s},
                                              {u"play.zur"_s, u"seek 15000.000"_s},
                                              {u"play.vor"_s, u"seek 25000.000"_s}};
    m_player.position = 20000;
    for (const MonitorCommand& command : kMonitorCommands) {
        EXPECT_TRUE(m_monitor.run(command.key, u"a"_s));
        EXPECT_EQ(m_calls.last(), lastCall.value(command.key.toString()));
        EXPECT_FALSE(m_texts.text(command.toolTip).isEmpty());
    }
    EXPECT_FALSE(m_monitor.run(u"all.copy", u"a"_s));
}

TEST_F(MonitorPlayerTest, TheSeekButtonsNeedALoadedTrack)
{
    EXPECT_TRUE(m_monitor.run(u"play.vor", u"a"_s));
    EXPECT_TRUE(calls().isEmpty());
}

} // namespace
