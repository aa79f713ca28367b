#pragma once

#include "platform/media/audio_output.h"
#include "player/card_mixer.h"

#include <QString>

#include <mutex>

namespace melovane {

/// Keeps one output open: on the card asked for, or on the system's choice while that is not there.
///
/// Opening and closing may take the better part of a second: beat() belongs to a thread that may
/// wait, the other operations to the window.
class CardKeeper
{
public:
    struct State
    {
        QString name;
        bool isOpen = false;
        bool isLost = false;
    };

    /// \param output,mixer outlive the keeper
    CardKeeper(AudioOutput& output, CardMixer& mixer)
        : m_output(output)
        , m_mixer(mixer)
    {}

    /// From now on a card that is gone is replaced by none: the system's choice may be heard by
    /// others. Before the first beat.
    void forbidStandIn() { m_hasStandIn = false; }

    /// The card is taken by the next beat; an empty name is the system's choice.
    void want(const QString& name);
    void wantNone();
    [[nodiscard]] State state() const;

    // The side that may wait.

    /// True once after another card was wanted: what is open has to be closed.
    [[nodiscard]] bool takeChange();
    void close();
    /// Opens, notices a lost card, and takes it back when it is there and nothing plays.
    void beat(bool isSilent);

private:
    [[nodiscard]] int numberOf(const QString& name);
    void open();
    void publish(bool isOpen, bool isLost);

    AudioOutput& m_output;
    CardMixer& m_mixer;

    mutable std::mutex m_mutex;
    State m_state; ///< under the mutex, as the next
    bool m_isWanted = false;
    bool m_isNew = false;

    bool m_hasStandIn = true;
    int m_untilLook = 0; ///< beats
};

} // namespace melovane
