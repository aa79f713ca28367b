#include "siblings/melovanejob/job_loop.h"

#include "platform/db/db_error.h"
#include "platform/system/clock.h"
#include "platform/system/passing_time.h"

#include <utility>

namespace melovane {

JobLoop::JobLoop(Parts parts)
    : m_parts(std::move(parts))
{}

std::chrono::seconds JobLoop::passed() const
{
    return std::chrono::duration_cast<std::chrono::seconds>(m_parts.passing.passed());
}

void JobLoop::look()
{
    if (m_isEnding) {
        return;
    }
    if (m_parts.isTaken()) {
        end();
        return;
    }
    const bool consoleIsAlive = m_parts.consoleIsAlive();
    if (isAlone(consoleIsAlive)) {
        end();
        return;
    }
    m_schedule.setSettings(m_parts.settings());
    m_schedule.look(m_parts.clock.now(), passed(), m_parts.library());
    if (consoleIsAlive && !m_running) {
        ask();
    }
}

/// A job that runs is left the time to end.
bool JobLoop::isAlone(bool consoleIsAlive)
{
    const std::chrono::seconds now = passed();
    if (consoleIsAlive || !m_consoleSeen || m_running) {
        m_consoleSeen = now;
    }
    return now - *m_consoleSeen >= kAlone;
}

void JobLoop::ask()
{
    for (const JobKind kind : m_schedule.wanted()) {
        askFor(kind);
    }
    startNext();
}

void JobLoop::askFor(JobKind kind)
{
    try {
        if (m_parts.hasWork(kind)) {
            m_waiting.push_back(kind);
        } else {
            m_schedule.asked(kind);
        }
    } catch (const DbError&) {
        // Locked, or about to be replaced: it is asked again.
        m_schedule.postponed(kind);
    }
}

void JobLoop::startNext()
{
    while (!m_waiting.empty() && !m_running) {
        const JobKind kind = m_waiting.front();
        m_waiting.pop_front();
        if (m_parts.start(kind)) {
            m_schedule.asked(kind);
            m_running = kind;
        } else {
            m_schedule.postponed(kind);
        }
    }
}

void JobLoop::jobEnded(bool allDone)
{
    if (!m_running) {
        return;
    }
    const JobKind kind = *std::exchange(m_running, std::nullopt);
    if (!allDone) {
        m_schedule.failed(kind);
    }
    if (!m_isEnding) {
        startNext();
    }
}

void JobLoop::end()
{
    if (std::exchange(m_isEnding, true)) {
        return;
    }
    m_waiting.clear();
    if (m_running) {
        m_parts.stopJob();
    }
    m_parts.endProgram();
}

} // namespace melovane
