#pragma once

#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "monitor/monitor_player.h"
#include "platform/controls/monitor_panel.h"
#include "platform/controls/warnings.h"
#include "shell/fakes.h"
#include "store/file_locator.h"
#include "support/suite_fixture.h"

namespace melovane::test {

/// Answers every warning with OK and writes it down.
class RecordingWarnings : public Warnings
{
public:
    WarningAnswer ShowWarning(const QString& text,
                              WarningType type,
                              const QString& title,
                              const QString&,
                              const QString&) override
    {
        texts.append(text);
        titles.append(title);
        types.push_back(type);
        return WarningAnswer::Ok;
    }

    QStringList texts;
    QStringList titles;
    std::vector<WarningType> types;
};

/// Keeps what it is to show.
class PlainMonitorPanel : public MonitorPanel
{
public:
    void showPlace(double ms, double lengthMs) override { place = {ms, lengthMs}; }

    void hidePlace() override { place.reset(); }

    void showVolume(int value) override { volume = value; }

    std::optional<std::pair<double, double>> place; ///< and length, milliseconds
    int volume = -1;
};

/// A message loop that does something when it is turned.
class TurningLoop : public SteppedLoop
{
public:
    void turn() override
    {
        if (onTurn) {
            onTurn();
        }
    }

    std::function<void()> onTurn;
};

/// A suite with settings and texts, and everything that a monitor speaks to but its player.
class MonitorFixture : public SuiteFixture
{
protected:
    MonitorFixture() { MelovaneConfiguration::fill(m_texts); }

    MonitorParts parts(Player& player)
    {
        return {player,
                m_status,
                m_panel,
                m_warnings,
                *m_settings,
                m_texts,
                suite.files,
                m_locator,
                m_loop,
                [this](const QString& fid) {
                    m_calls.append(QStringLiteral("read ") + fid);
                    return m_tracks.value(fid);
                },
                [this] {
                    m_calls.append(QStringLiteral("others"));
                    return m_othersAnswer;
                },
                [this](const QString& text) { m_shown.append(text); },
                [this](int volume) { m_volumes.append(volume); }};
    }

    /// A track whose file exists.
    QString addTrack(const QString& fid, int start = 0, int stop = 0, const QByteArray& bytes = "x")
    {
        MlvAllData track;
        track.FID = fid;
        track.Titel = QStringLiteral("Titel ") + fid;
        track.DName = fid + QStringLiteral(".mp3");
        track.Path = suite.dataFolder() + u'/';
        track.FrameStart = start;
        track.FrameStop = stop;
        m_tracks.insert(fid, track);
        return suite.write(track.DName, bytes);
    }

    void playByPosition(const QString& value)
    {
        m_texts.FindObject(u"db.monitor.play.by.pos")->Value = value;
    }

    std::unique_ptr<GlobalSettings> m_settings = suite.makeSettings();
    ConfigObjects m_texts{suite.folders.paths(), suite.folders.profile(), suite.files};
    FileLocator m_locator{suite.files, suite.dataFolder()};
    PlainStatusLine m_status;
    PlainMonitorPanel m_panel;
    RecordingWarnings m_warnings;
    TurningLoop m_loop;
    QHash<QString, MlvAllData> m_tracks;
    QStringList m_calls;        ///< what the monitor asked and told, in order
    QStringList m_shown;        ///< status texts
    QList<int> m_volumes;       ///< chosen
    bool m_othersAnswer = true; ///< when asked to fall silent
};

} // namespace melovane::test
