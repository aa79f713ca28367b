#include "shell/docking.h"

#include "platform/controls/window_frame.h"

namespace melovane {

Docking::Docking(WindowFrame& window)
    : m_window(window)
{}

void Docking::dock()
{
    if (!isDocked()) {
        // Read before the window is made normal: on the way out of the maximised state it has
        // the whole screen for a while.
        m_before.setPlace(m_window.place());
        m_before.StateBeforeDocking = m_window.isMaximisedNow() ? 1 : 0;
        m_before.Docked = 1;
    }
    m_window.setNormal();
    const QRect area = m_window.screenArea();
    m_window.setOuterPlace(area.adjusted(0, area.height() / 2, 0, 0));
}

void Docking::undock()
{
    if (isDocked()) {
        m_window.setPlace(m_before.place());
        if (m_before.StateBeforeDocking != 0) {
            m_window.maximise();
        }
        m_before.Docked = 0;
    }
}

} // namespace melovane
