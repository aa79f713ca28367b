#pragma once

#include "platform/media/audio_output.h"

#include <QString>

#include <functional>
#include <vector>

namespace melovane {

/// One audio frame in milliseconds: 1152 samples at 44100 Hz. The unit of positions in lists.
inline constexpr double kFrameMs = 26.12245;

/// Why a file is not played, or not to its end.
enum class PlayFault
{
    None,
    NoCard,  ///< no output, the chosen one cannot be opened, or it has been pulled out
    Missing, ///< no such file, or it cannot be opened
    NoAudio, ///< holds no MP3 audio
    Broken,  ///< what comes next in the file cannot be read
};

/// `KSMPlay`: plays one MP3 file at a time on one sound card.
///
/// Times are milliseconds from the beginning of the file's first frame, nothing cut off at either
/// end. Events arrive from the message loop; a handler may call the player again.
class Player
{
public:
    virtual ~Player() = default;

    /// What can be played on now, counted from 1; empty without any.
    [[nodiscard]] virtual std::vector<SoundCard> cards() = 0;

    /// Chooses the card by its number, kSystemCard for the system's own choice. What is playing
    /// stops, the file stays loaded. The card itself is taken when something plays, and given back
    /// some seconds after.
    virtual void open(int card) = 0;
    /// Stops and gives the card back at once.
    virtual void close() = 0;

    /// Loads a file, stopped at its beginning, and then calls onLoaded. What was loaded is gone
    /// also when this fails.
    virtual PlayFault load(const QString& file) = 0;
    [[nodiscard]] virtual bool isLoaded() const = 0;
    virtual void unload() = 0;

    /// From the current position to the end of the file.
    virtual PlayFault play() = 0;
    /// Exactly the samples from `fromMs` up to, not including, `toMs`, both cut to the file. A
    /// range without samples ends at once.
    virtual PlayFault playRange(double fromMs, double toMs) = 0;
    virtual void stop() = 0;
    /// Playing goes on from there, up to the end that it had; when that lies before the new place,
    /// to the end of the file. Outside the file: its beginning or its end.
    virtual void seek(double ms) = 0;
    [[nodiscard]] virtual bool isPlaying() const = 0;

    /// 0 to 10000; beyond is taken as the nearest. Also while playing, without a click.
    virtual void setVolume(int volume) = 0;
    [[nodiscard]] virtual int volume() const = 0;

    /// Where it plays or stands, and how much the file holds. 0 without a file.
    [[nodiscard]] virtual double positionMs() const = 0;
    [[nodiscard]] virtual double lengthMs() const = 0;
    /// Length in units of kFrameMs, whatever the frames of the file are: 48 kHz files have shorter
    /// ones.
    [[nodiscard]] virtual int lengthFrames() const = 0;

    virtual void setOnLoaded(std::function<void()> handler) = 0;
    /// Some ten times a second while playing, and once after an end, a stop or a seek.
    virtual void setOnPosition(std::function<void(double ms)> handler) = 0;
    /// Playing ended by itself: None at the end of what was to be played, else why it had to.
    virtual void setOnEnded(std::function<void(PlayFault)> handler) = 0;
};

} // namespace melovane
