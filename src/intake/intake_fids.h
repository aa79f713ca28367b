#pragma once

#include "platform/system/clock.h"
#include "store/make_fid.h"

#include <QString>

namespace melovane {

/// Identifiers for many tracks at once.
///
/// One second of the clock holds a thousand of them, an import needs many thousands. When one is
/// taken, the following are made for one second earlier: seconds that lie in the past are taken by
/// nobody else any more, so no program that makes identifiers now meets them.
class IntakeFids
{
public:
    explicit IntakeFids(const Clock& clock);

    /// The candidate when it can be trusted, else a new identifier.
    [[nodiscard]] QString make(const QString& candidate = {});

    /// Says that the last new one exists already.
    void wasTaken();

private:
    class PastClock : public Clock
    {
    public:
        explicit PastClock(const Clock& clock)
            : m_clock(clock)
        {}

        [[nodiscard]] QDateTime now() const override
        {
            return m_clock.now().addSecs(-m_secondsBack);
        }

        void stepBack() { ++m_secondsBack; }

    private:
        const Clock& m_clock;
        qint64 m_secondsBack = 0;
    };

    PastClock m_clock;
    Mod_Make_FID::FidMaker m_maker;
};

} // namespace melovane
