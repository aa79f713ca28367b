#include "shell/docking.h"

#include "platform/controls/window_frame.h"

namespace melovane {

Docking::Docking(WindowFrame& window)
    : m_window(window)
{}

void Docking::dock()
{
    m_window.setNormal();
    if (!isDocked()) {
        m_before.setPlace(m_window.place());
        m_before.Docked = 1;
    }
    const QRect area = m_window.screenArea();
    m_window.setOuterPlace(area.adjusted(0, area.height() / 2, 0, 0));
}

void Docking::undock()
{
    if (isDocked()) {
        m_window.setPlace(m_before.place());
        m_before.Docked = 0;
    }
}

} // namespace melovane
