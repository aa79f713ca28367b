#pragma once

#include <QString>

namespace melovane {

/// The monitor player, as the main window uses it.
class MonitorControl
{
public:
    virtual ~MonitorControl() = default;

    /// \param action   "PLAY", "PLAYCENTER", "SEEK" or "STOP", in any letter case
    /// \param fid      the track; empty means the one that was played last
    /// \param position for "SEEK", in frames
    virtual void MonitorPlayer(const QString& action, const QString& fid, int position) = 0;

    /// Where it plays or stands, in frames; 0 without a track.
    [[nodiscard]] virtual int positionFrames() const = 0;

    virtual void stop() = 0;
    /// 0 to 10000.
    virtual void setVolume(int volume) = 0;
    /// Lists the sound cards and takes the one of the settings.
    virtual void reopen() = 0;
};

} // namespace melovane
