#pragma once

#include "player/glide.h"
#include "player/sinc_table.h"
#include "player/voice_link.h"

namespace melovane {

/// One deck in the mix: everything happens on the card's thread, nothing waits or takes memory.
///
/// A block is begin(), for each frame next(), then end(); the samples that come out do not depend
/// on how frames are cut into blocks.
class AirVoice
{
public:
    /// \param link,tables outlive the voice
    AirVoice(VoiceLink& link, const SincTables& tables);

    /// Takes what was asked for and what was decoded since the last block.
    /// \param isSilent nothing will be heard of this block: what has to end ends at once
    void begin(bool isSilent);
    void end();

    /// Plays, or is ready and told when to start.
    [[nodiscard]] bool hasWork() const { return isPlaying() || waits(); }

    [[nodiscard]] bool isPlaying() const { return m_state == State::Playing; }

    /// Stands at its first frame and was told when to start.
    [[nodiscard]] bool waits() const;

    /// It will be heard without being asked again: its end is not known yet.
    [[nodiscard]] bool isComing() const;

    [[nodiscard]] const StartRule& rule() const { return m_rule; }

    /// \param frame of the card, where its first sample is heard
    void start(qint64 frame);

    /// Frames of the card until its end, at the speed that it has now.
    [[nodiscard]] double remaining() const;

    /// The next frame; silent unless it plays.
    [[nodiscard]] Stereo next();

private:
    enum class State
    {
        Idle,
        Ready,
        Playing,
        Seeking, ///< fell silent, and goes on as soon as the other place is decoded
        Ended
    };

    void obey(const VoiceCommand& command);
    void adopt();
    void giveBack(State state);
    void answerRecall(bool isSilent);
    void takeEnd();
    void reshape(const VoiceShape& shape, int pitchFrames);
    void fade(int frames);

    [[nodiscard]] double step() const;
    [[nodiscard]] bool isStarving();
    [[nodiscard]] double enough();
    [[nodiscard]] Stereo read() const;
    void advance();
    [[nodiscard]] DeckState told() const;

    VoiceLink& m_link;
    const SincTables& m_tables;
    Equaliser m_equaliser;

    State m_state = State::Idle;
    bool m_owns = false; ///< the link's plan and ring
    quint32 m_load = 0;
    VoiceCommand m_early; ///< a shape of a load that was not there yet
    StartRule m_rule;
    quint32 m_ruleLoad = 0; ///< which may still be decoded

    // Places of the file.
    double m_place = 0;
    qint64 m_end = 0;
    double m_there = 0; ///< up to here there is something to read

    double m_rate = 1; ///< samples of the file for each frame of the card, at its own speed
    FadeCurve m_fadeIn;
    FadeCurve m_fadeOut;
    double m_played = 0; ///< frames since the first
    Glide m_gain;
    Glide m_pitch;
    Glide m_gate;            ///< closes for what was not prepared
    Glide m_patch;           ///< what a changed end or curve would jump by
    bool m_closing = false;  ///< it ends where the gate is closed
    bool m_recalled = false; ///< the gate closes because the feeder wants the ring
    double m_enough = 1;     ///< goes to 0 where decoding is late
    bool m_starves = false;
    int m_between = 0; ///< of kEdge: how much of what is read comes from between the samples
    qint64 m_startedAt = -1;
    double m_loudest = 0;
    int m_underruns = 0;
};

} // namespace melovane
