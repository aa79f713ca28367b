#pragma once

#include "platform/media/audio_output.h"

#include <atomic>
#include <memory>
#include <vector>

namespace melovane {

class MessageLoop;
class Timer;

/// A tone of half a second on a sound card, to hear which one it is and how loud.
class TestTone : private SampleSource
{
public:
    /// Both outlive the tone.
    TestTone(AudioOutput& output, MessageLoop& loop);
    ~TestTone() override;
    TestTone(const TestTone&) = delete;
    TestTone& operator=(const TestTone&) = delete;

    /// The cards of the machine, asked once.
    [[nodiscard]] const std::vector<SoundCard>& cards();

    /// Begins the tone, one that sounds begins anew.
    ///
    /// \param card   name; empty, or of no card, for the one that the system chooses
    /// \param volume 0 to 10000
    /// False, and silence, when the card cannot be opened.
    [[nodiscard]] bool play(const QString& card, int volume);

private:
    void fill(std::span<qint16> samples) noexcept override;
    void closeWhenDone();

    AudioOutput& m_output;
    std::unique_ptr<Timer> m_timer;
    std::vector<SoundCard> m_cards;
    bool m_areKnown = false;
    std::atomic<int> m_left = 0; ///< frames
    std::atomic<int> m_volume = 0;
};

} // namespace melovane
