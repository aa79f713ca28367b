#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace melovane {

/// One audio frame in milliseconds: 1152 samples at 44100 Hz. The unit of positions in lists.
inline constexpr double kFrameMs = 26.12245;

/// An output of the machine.
struct SoundCard
{
    QString name; ///< as the settings keep it
    int number = 0;
};

/// Why a file is not played.
enum class LoadFault
{
    None,
    NoCard,  ///< no output, or the chosen one cannot be opened
    Missing, ///< no such file, or it cannot be read
    NoAudio, ///< holds no MP3 audio
};

/// `KSMPlay`: plays one MP3 file at a time on one sound card.
///
/// Times are milliseconds from the beginning of the file's first frame, nothing cut off at either
/// end. Events arrive from the message loop.
class Player
{
public:
    virtual ~Player() = default;

    /// What can be played on now; empty without any.
    [[nodiscard]] virtual std::vector<SoundCard> cards() = 0;

    /// Takes a card by its number, or the system's own choice for a number that no card has. What
    /// is playing stops, the file stays loaded. False when no output can be opened.
    virtual bool open(int card) = 0;
    virtual void close() = 0;

    /// Loads a file, stopped at its beginning, and then calls onLoaded. What was loaded is gone
    /// also when this fails.
    [[nodiscard]] virtual LoadFault load(const QString& file) = 0;
    [[nodiscard]] virtual bool isLoaded() const = 0;
    virtual void unload() = 0;

    /// From the current position to the end of the file.
    virtual void play() = 0;
    /// Exactly the samples from `fromMs` up to, not including, `toMs`.
    virtual void playRange(double fromMs, double toMs) = 0;
    virtual void stop() = 0;
    /// Playing goes on from there. Outside the file: its beginning or its end.
    virtual void seek(double ms) = 0;
    [[nodiscard]] virtual bool isPlaying() const = 0;

    /// 0 to 10000; beyond is taken as the nearest.
    virtual void setVolume(int volume) = 0;
    [[nodiscard]] virtual int volume() const = 0;

    /// Where it plays or stands, and how much the file holds.
    [[nodiscard]] virtual double positionMs() const = 0;
    [[nodiscard]] virtual double lengthMs() const = 0;
    /// Frames in the file.
    [[nodiscard]] virtual int lengthFrames() const = 0;

    virtual void setOnLoaded(std::function<void()> handler) = 0;
    /// Some ten times a second while playing, and once when it ends or stops.
    virtual void setOnPosition(std::function<void(double ms)> handler) = 0;
};

} // namespace melovane
