#pragma once

#include <QKeyEvent>

namespace melovane {

/// A key that acts once, however long it is held: when it goes down or, without setAtPress(), when
/// it is let go.
///
/// The display repeats a held key as pairs of going up and down at the same moment, and says so;
/// under load a pair comes without that word, and is known by its moment alone.
class HeldKey
{
public:
    void setAtPress() { m_atPress = true; }

    /// The key has gone down; whether it acts.
    [[nodiscard]] bool pressed(const QKeyEvent& event);

    /// The key has gone up; whether it acts. One that went down elsewhere, in a question say, does
    /// not.
    [[nodiscard]] bool released(const QKeyEvent& event);

    /// Others have the keyboard now: letting go acts no more.
    void forget() { m_isDown = false; }

private:
    bool m_atPress = false;
    bool m_isDown = false; ///< and will act when it is let go
    quint64 m_upAt = 0;    ///< of the last time it went up, in the display's time; 0 for none
};

} // namespace melovane
