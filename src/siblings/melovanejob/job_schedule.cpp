#include "siblings/melovanejob/job_schedule.h"

#include <algorithm>

namespace melovane {

namespace {

/// What a clock on the wall shows, without the jumps of summer time: a time of day that such a
/// jump leaves out has come when it is over.
QDateTime onTheWall(const QDateTime& moment)
{
    return {moment.date(), moment.time(), Qt::UTC};
}

bool hasCome(QTime time, const QDateTime& since, const QDateTime& now)
{
    // Of all the days between, the last on which it was that late.
    QDateTime last(now.date(), time, Qt::UTC);
    if (last > now) {
        last = last.addDays(-1);
    }
    return last > since;
}

} // namespace

void JobSchedule::look(const QDateTime& now, std::chrono::seconds passed, const QString& library)
{
    m_passed = passed;
    if (library != m_library) {
        m_library = library;
        m_lastChange = passed;
        for (State& state : m_states) {
            state.isAsked = false;
        }
    }
    takeTimes(onTheWall(now));
}

void JobSchedule::takeTimes(const QDateTime& now)
{
    // A clock that was set back begins anew; so does the first look.
    if (m_now.isValid()) {
        for (const JobKind kind : kJobKinds) {
            const QList<QTime>& times = m_settings.rule(kind).times;
            if (std::any_of(times.begin(), times.end(),
                            [&](QTime time) { return hasCome(time, m_now, now); })) {
                state(kind).timeHasCome = true;
            }
        }
    }
    m_now = now;
}

bool JobSchedule::isWanted(JobKind kind) const
{
    const State& state = m_states[size_t(kind)];
    const bool idleLongEnough = m_settings.rule(kind).whenIdle && !state.isAsked &&
                                m_passed >= state.retryAt &&
                                m_passed - m_lastChange >= m_settings.pause;
    return m_passed >= state.heldUntil && (state.timeHasCome || idleLongEnough);
}

std::vector<JobKind> JobSchedule::wanted() const
{
    std::vector<JobKind> kinds;
    if (!m_library.isEmpty()) {
        std::copy_if(kJobKinds.begin(), kJobKinds.end(), std::back_inserter(kinds),
                     [this](JobKind kind) { return isWanted(kind); });
    }
    return kinds;
}

void JobSchedule::asked(JobKind kind)
{
    state(kind).isAsked = true;
    state(kind).timeHasCome = false;
}

void JobSchedule::failed(JobKind kind)
{
    state(kind).isAsked = false;
    state(kind).retryAt = m_passed + m_settings.retry;
}

void JobSchedule::postponed(JobKind kind)
{
    state(kind).heldUntil = m_passed + m_settings.pause;
}

} // namespace melovane
