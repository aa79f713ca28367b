#pragma once

#include "platform/media/sound_stream.h"
#include "player/voice_link.h"

#include <mutex>
#include <optional>
#include <vector>

namespace melovane {

/// Opens the files of one deck and decodes them ahead, on a thread that may wait for a disc.
class DeckFeeder
{
public:
    /// Decoded before a deck is ready, and ahead of what is heard.
    static constexpr int kReadyMs = 1000;
    static constexpr int kAheadMs = 8000;

    /// What became of a load.
    struct Result
    {
        quint32 load = 0;
        PlayFault fault = PlayFault::None; ///< Failed with it, or broke off when it was decoded
        bool isDecoded = false;
        double fromMs = 0;
        double toMs = 0;
        int sampleRate = kAirRate;
    };

    /// \param link outlives the feeder
    DeckFeeder(VoiceLink& link, SoundStreamMaker makeStream);

    // The side of the window. The last one counts.

    void load(quint32 number, const EntrySound& sound);
    void unload();
    /// \param now the entry as it is by now
    void seek(double ms, const EntrySound& now);
    /// Takes over the end of the entry alone.
    void changeEnd(int frameStop);
    [[nodiscard]] Result result() const;

    /// Does what was asked for and decodes on, at most for some milliseconds of work beside the
    /// opening of a file. Always on the same thread.
    void beat();

private:
    struct Wish
    {
        std::optional<std::pair<quint32, EntrySound>> load;
        bool unload = false;
        std::optional<std::pair<double, EntrySound>> seek;
        std::optional<int> frameStop;
    };

    void open(quint32 number, const EntrySound& sound);
    void prepareSeek(double ms, const EntrySound& now);
    void setEnd(int frameStop);
    [[nodiscard]] bool takesRing(VoiceLink::Recall why);
    void prepare();
    void decode(qint64 wanted);
    void endHere();
    void fail(PlayFault fault);
    [[nodiscard]] qint64 sampleAt(double ms) const;
    [[nodiscard]] double msAt(qint64 sample) const;
    void publish(bool isDecoded);

    VoiceLink& m_link;
    SoundStreamMaker m_makeStream;

    mutable std::mutex m_mutex;
    Wish m_wish; ///< under the mutex, as the next
    Result m_result;

    // The decoding thread's.
    std::unique_ptr<SoundStream> m_stream; ///< of m_plan
    EntrySound m_sound;
    VoicePlan m_plan;
    bool m_isWaiting = false; ///< the plan is made, the mix still has the ring
    bool m_seeks = false;     ///< the plan is the same load at another place
    bool m_feeds = false;
    PlayFault m_fault = PlayFault::None;
    qint64 m_next = 0; ///< sample to be decoded next
    qint64 m_end = 0;
    qint64 m_readable = 0; ///< samples that the file holds, as far as that is known
    bool m_isOver = false; ///< nothing more can be read
};

/// How an entry sounds, without its file and its start.
[[nodiscard]] VoiceShape shapeOf(const EntrySound& sound);

} // namespace melovane
