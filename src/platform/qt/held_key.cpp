#include "platform/qt/held_key.h"

#include <utility>

namespace melovane {

bool HeldKey::pressed(const QKeyEvent& event)
{
    const bool isLateRepeat = m_upAt != 0 && event.timestamp() == m_upAt;
    if (event.isAutoRepeat() || isLateRepeat) {
        return false;
    }
    m_isDown = !m_atPress;
    return m_atPress;
}

bool HeldKey::released(const QKeyEvent& event)
{
    m_upAt = event.timestamp();
    return !event.isAutoRepeat() && std::exchange(m_isDown, false);
}

} // namespace melovane
