#include "intake/intake_fids.h"

namespace melovane {

IntakeFids::IntakeFids(const Clock& clock)
    : m_clock(clock)
    , m_maker(m_clock)
{}

QString IntakeFids::make(const QString& candidate)
{
    return m_maker.MakeFID(candidate);
}

void IntakeFids::wasTaken()
{
    m_clock.stepBack();
}

} // namespace melovane
