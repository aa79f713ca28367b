#pragma once

#include "platform/controls/monitor_panel.h"

#include <QObject>

class QLabel;

namespace melovane {

class IconSet;
class Skin;
class StatusBar;
class ValueBar;

/// What assistive programs and tool tips say of the bars.
struct MonitorBarTexts
{
    QString seekName;
    QString seekTip;
    QString volumeName;
    QString volumeTip;
};

/// The bars of the monitor player in the status line: the place in the track, as long as one plays,
/// in front of the times, and the volume behind them. F7 and F8 change the volume wherever the
/// keyboard is.
class MonitorBars : public QObject, public MonitorPanel
{
    Q_OBJECT

public:
    /// Stands in the status line and ends with it.
    MonitorBars(const Skin& skin, const IconSet& icons, StatusBar& status);

    void setTexts(const MonitorBarTexts& texts);

    void showPlace(double ms, double lengthMs) override;
    void hidePlace() override;
    void showVolume(int volume) override;

signals:
    /// The user wants to hear this place, in milliseconds.
    void placePicked(double ms);
    /// The user looks for a place; negative when not any longer.
    void placeOffered(double ms);
    /// Forward by so many milliseconds, or back.
    void moveWanted(double ms);
    /// 0 to 10000.
    void volumePicked(int volume);
    /// Louder or quieter.
    void volumeStepped(int steps);

private:
    void connectSeek();
    void connectVolume();

    const IconSet& m_icons;
    ValueBar* m_seek; ///< value and range in milliseconds
    QLabel* m_loudspeaker;
    ValueBar* m_volume; ///< 0 to 10000
};

} // namespace melovane
